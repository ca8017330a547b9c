#pragma once

#include <QString>
#include <optional>

/// Behind core::lang and core::langx. Main thread.
class ILanguage {
public:
    virtual ~ILanguage() = default;
    virtual int LanguageId() const = 0;
    /// Empty where the display language has no text with that id.
    virtual std::optional<QString> Text(unsigned int textId) const = 0;
};
