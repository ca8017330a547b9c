#pragma once

/// Marks what libzrhost.so exports. Everything else in it is hidden.
#define ZRHOST_API __attribute__((visibility("default")))
