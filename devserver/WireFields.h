#pragma once

#include <optional>
#include <string>

namespace devserver {

// An absent value stays an absent field.

/// SetField(message, &Message::set_number, value)
template <class Message, class T>
void SetField(Message& message, void (Message::*set)(T), const std::optional<T>& value) {
    if (value) {
        (message.*set)(*value);
    }
}

/// SetText(message, &Message::mutable_text, value)
template <class Message>
void SetText(Message& message, std::string* (Message::*field)(), const std::optional<std::string>& value) {
    if (value) {
        *(message.*field)() = *value;
    }
}

}  // namespace devserver
