#pragma once

#include <QColor>
#include <QPixmap>
#include <QString>
#include <memory>
#include <type_traits>

#include "framework/export.h"

namespace zr_ui_res {

/// Colours and images of the current theme, by name.
/// Thread: main thread.
/// Ownership: results are shared and stay valid after a change of the theme.
class ZRHOST_API Provider {
public:
    /// Returns the provider.
    /// Failure: never null, also after the end of the host.
    static Provider* instance();

    /// Sets `color` to the colour with that name.
    /// Failure: null and a log line for an unknown name.
    void get(std::shared_ptr<const QColor>& color, const QString& name);

    /// Sets `pixmap` to the image with that name of ZResource, in its own size and rendered for that pixel ratio. An
    /// icon gets the theme's text colour.
    /// Failure: null and a log line for an unknown name.
    void get(std::shared_ptr<const QPixmap>& pixmap, const QString& name, double devicePixelRatio);

private:
    Provider() = default;
};

/// A colour or an image that is stored by name and resolved at each use, so that it follows the theme.
/// Thread: main thread.
template <class T>
class TResource {
    static_assert(std::is_same<T, QColor>::value || std::is_same<T, QPixmap>::value, "a colour or a drawing");

public:
    /// Without a name.
    TResource() = default;
    /// Keeps the name only; nothing is loaded before `value`.
    explicit TResource(const QString& name) : m_name(name) {}

    /// Returns the name; empty for a default-constructed resource.
    const QString& name() const { return m_name; }

    /// Returns the value in the current theme. The ratio of device pixels applies to images only.
    /// Failure: a default-constructed value for an empty or unknown name.
    T value(double devicePixelRatio = 1.0) const {
        std::shared_ptr<const T> found;
        if (!m_name.isEmpty()) {
            if constexpr (std::is_same<T, QPixmap>::value) {
                Provider::instance()->get(found, m_name, devicePixelRatio);
            } else {
                Provider::instance()->get(found, m_name);
            }
        }
        return found ? *found : T();
    }

private:
    QString m_name;
};

}  // namespace zr_ui_res
