#pragma once

#include <QMetaProperty>
#include <QWidget>

/// Writes the text of a form's field, which has this key.
inline void Write(QWidget& form, const char* key, const char* text) {
    const QString name = form.objectName() + QLatin1Char('.') + QString::fromLatin1(*key ? key : "value");
    auto* field = form.findChild<QWidget*>(name);
    field->metaObject()->userProperty().write(field, QString::fromLatin1(text));
}
