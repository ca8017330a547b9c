#include "workbench/diagnosis/WidgetRules.h"

#include <QStringList>
#include <algorithm>
#include <tuple>

#include "workbench/diagnosis/Literal.h"

namespace widget_rules {
namespace {

constexpr std::tuple<const char*, QString CPremiumUIData::*, QString CPremiumUIData::*> kTextSets[] = {
    {"main texts", &CPremiumUIData::strMainTitle, &CPremiumUIData::strMainBtn},
    {"detail texts", &CPremiumUIData::strDetailTitle, &CPremiumUIData::strDetailBtn},
    {"second detail texts", &CPremiumUIData::strDetailSubTitle, &CPremiumUIData::strDetailSubBtn},
};

Rule TypeRule(int type, std::initializer_list<int> allowed) {
    QStringList words;
    std::transform(allowed.begin(), allowed.end(), std::back_inserter(words), Activation);
    return {"activation type"_q, Activation(type), words.join(", "_q),
            std::find(allowed.begin(), allowed.end(), type) != allowed.end()};
}

}  // namespace

const Rule* Widget::Refusing() const {
    const auto rule = std::find_if(rules.begin(), rules.end(), [](const Rule& one) { return !one.passes; });
    return rule == rules.end() ? nullptr : &*rule;
}

std::vector<Widget> Of(const CPremiumUIAccessData& record, bool isNewSystem) {
    const int type = record.nActivationType;
    const Rule system{"newer system"_q, isNewSystem ? "yes"_q : "no"_q, "no"_q, !isNewSystem};
    const Rule source{"activation source"_q, Source(record.nActivationSource), Source(ZRPremiumSourceVip),
                      record.nActivationSource == ZRPremiumSourceVip};
    const Rule layout{"UI type"_q, record.strUIType, "D"_q, record.strUIType == QLatin1String("D")};
    const Rule banner = TypeRule(type, {ZRPremiumActivationLimitedTime, ZRPremiumActivationFrozen,
                                        ZRPremiumActivationNotActivated, ZRPremiumActivationReady});
    const Rule mask =
        TypeRule(type, {ZRPremiumActivationFrozen, ZRPremiumActivationNotActivated, ZRPremiumActivationReady});
    std::vector<Widget> widgets{
        {"Icon"_q, QString(), {system, source, {"activation type"_q, Activation(type), "any but 0"_q, type != 0}}},
        {"Tag"_q, QString(), {source, TypeRule(type, {ZRPremiumActivationFull})}}};
    for (const auto& kind : {"Banner"_q, "Locked Mask"_q, "Exclusive Mask"_q}) {
        const bool needsTitle = kind != QLatin1String("Exclusive Mask");
        for (const auto& [set, title, button] : kTextSets) {
            const Rule texts{"texts"_q,
                             "title \u201C%1\u201D, button \u201C%2\u201D"_q.arg(record.*title, record.*button),
                             needsTitle ? "title and button text"_q : "button text"_q,
                             !(record.*button).isEmpty() && !(needsTitle && (record.*title).isEmpty())};
            widgets.push_back(
                {kind, QString::fromUtf8(set), {layout, kind == QLatin1String("Banner") ? banner : mask, texts}});
        }
    }
    return widgets;
}

QString Worded(int number, std::initializer_list<const char*> words, int first) {
    const bool hasWord = first <= number && number < first + int(words.size());
    return hasWord ? "%1 \u00B7 %2"_q.arg(number).arg(QString::fromUtf8(words.begin()[number - first]))
                   : QString::number(number);
}

QString Activation(int type) {
    return Worded(type, {"not said", "limited time", "frozen", "full", "empty", "not activated", "ready"});
}

QString Source(int source) {
    return Worded(source, {"not said", "premium rule", "VIP rule", "private customer"});
}

}  // namespace widget_rules
