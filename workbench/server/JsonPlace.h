#pragma once

#include <QString>
#include <optional>

/// Finds the values that a server's errors name in a JSON text.
namespace json_place {

/// A range of characters of the text.
struct Place {
    int start = 0;
    int length = 0;
};

/// Returns the value at a key path such as users[2].id, or the innermost value that contains it. Nothing if the text
/// is not JSON.
std::optional<Place> AtKey(const QString& text, const QString& path);

/// Returns the place that an error of the server names: by its key path, or by the line and column of a syntax error.
std::optional<Place> OfError(const QString& text, const QString& error);

}  // namespace json_place
