#include "workbench/Aliases.h"

#include <algorithm>

namespace {

bool IsDigit(const QString& text, int at) {
    return at >= 0 && at < text.size() && text[at] >= QLatin1Char('0') && text[at] <= QLatin1Char('9');
}

}  // namespace

void CAliases::LearnNumber(const QString& kind, quint64 value) {
    if (value != 0) {
        Learn(kind, QString::number(value), true);
    }
}

void CAliases::LearnText(const QString& kind, const QString& value) {
    if (!value.isEmpty()) {
        Learn(kind, value, false);
    }
}

void CAliases::Learn(const QString& kind, const QString& value, bool isNumber) {
    const bool known =
        std::any_of(m_aliases.begin(), m_aliases.end(), [&value](const Alias& alias) { return alias.value == value; });
    if (known) {
        return;
    }
    m_aliases.push_back({value, QStringLiteral("%1-%2").arg(kind).arg(++m_counts[kind]), isNumber});
    std::stable_sort(m_aliases.begin(), m_aliases.end(),
                     [](const Alias& left, const Alias& right) { return left.value.size() > right.value.size(); });
}

QString CAliases::Redacted(const QString& text) const {
    QString redacted;
    for (int at = 0; at < text.size();) {
        const auto found = std::find_if(m_aliases.begin(), m_aliases.end(), [&text, at](const Alias& alias) {
            const bool here = text.midRef(at, alias.value.size()).compare(alias.value, Qt::CaseInsensitive) == 0;
            return here && !(alias.isNumber && (IsDigit(text, at - 1) || IsDigit(text, at + alias.value.size())));
        });
        if (found == m_aliases.end()) {
            redacted += text[at++];
        } else {
            redacted += found->alias;
            at += found->value.size();
        }
    }
    return redacted;
}
