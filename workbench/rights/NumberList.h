#pragma once

#include <QString>
#include <QVector>

/// Numbers as a person types them, parted by blanks or commas.
struct NumberList {
    QVector<int> numbers;
    QString wrongWord;  // the first word that is no whole number of 32 bits; empty if all are

    static NumberList Read(const QString& text);
};
