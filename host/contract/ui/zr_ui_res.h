#pragma once

#include <QColor>
#include <QPixmap>
#include <QString>
#include <memory>
#include <type_traits>

#include "framework/export.h"

namespace zr_ui_res {

/// Colours and drawings by name, as the theme of the moment has them. Main thread.
class ZRHOST_API Provider {
public:
    /// Never null, also after the host has ended.
    static Provider* instance();

    /// Null, and a line in the log, for a name that is not known.
    void get(std::shared_ptr<const QColor>& color, const QString& name);

    /// `name` is one of ZResource's. In the drawing's own size, sharp on a screen of that ratio; an icon comes in
    /// the theme's colour of text. Null, and a line in the log, for a name that is not known.
    void get(std::shared_ptr<const QPixmap>& pixmap, const QString& name, double devicePixelRatio);

private:
    Provider() = default;
};

/// A colour or a drawing that is kept by its name and looked up at each use, so that it follows the theme.
template <class T>
class TResource {
    static_assert(std::is_same<T, QColor>::value || std::is_same<T, QPixmap>::value, "a colour or a drawing");

public:
    TResource() = default;
    explicit TResource(const QString& name) : m_name(name) {}

    const QString& name() const { return m_name; }

    /// What the theme of the moment has under the name; default-made where it has nothing, or there is no name.
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
