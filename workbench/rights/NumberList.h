#pragma once

#include <QString>
#include <QVector>

/// Typed numbers, separated by blanks or commas.
struct NumberList {
    QVector<int> numbers;
    QString wrongWord;  // the first word that is not an integer of 32 bits; empty if all are

    static NumberList Read(const QString& text);
};
