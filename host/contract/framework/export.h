#pragma once

/// Marks an exported symbol of libzrhost.so. All other symbols are hidden.
#define ZRHOST_API __attribute__((visibility("default")))
