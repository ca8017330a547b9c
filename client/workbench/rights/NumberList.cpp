#include "workbench/rights/NumberList.h"

#include <QRegularExpression>

NumberList NumberList::Read(const QString& text) {
    static const QRegularExpression gap(QStringLiteral("[\\s,;]+"));
    NumberList list;
    for (const QString& word : text.split(gap, Qt::SkipEmptyParts)) {
        bool isNumber = false;
        list.numbers << word.toInt(&isNumber);
        if (!isNumber) {
            list.wrongWord = word;
            return list;
        }
    }
    return list;
}
