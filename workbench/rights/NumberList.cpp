#include "workbench/rights/NumberList.h"

#include <QRegularExpression>

NumberList NumberList::Read(const QString& text) {
    static const QRegularExpression gap(QStringLiteral("[\\s,;]+"));
    NumberList list;
    const QStringList words = text.split(gap, Qt::SkipEmptyParts);
    for (const QString& word : words) {
        bool isNumber = false;
        list.numbers << word.toInt(&isNumber);
        if (!isNumber) {
            list.wrongWord = word;
            return list;
        }
    }
    return list;
}
