#pragma once

/// An entry of the AI chat somewhere in the client. The numbers are agreed between the entries and the
/// server; the growth module only compares them.
enum ZRAIChatEntryScene : int {};
