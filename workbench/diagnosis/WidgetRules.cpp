#include "workbench/diagnosis/WidgetRules.h"

#include <QStringList>
#include <algorithm>

#include "workbench/diagnosis/Literal.h"
#include "workbench/diagnosis/RightText.h"

namespace widget_rules {
namespace {

struct TextSet {
    const char* name;
    QString CPremiumUIData::*title;
    QString CPremiumUIData::*button;
};

constexpr TextSet kTextSets[] = {
    {"main texts", &CPremiumUIData::strMainTitle, &CPremiumUIData::strMainBtn},
    {"detail texts", &CPremiumUIData::strDetailTitle, &CPremiumUIData::strDetailBtn},
    {"second detail texts", &CPremiumUIData::strDetailSubTitle, &CPremiumUIData::strDetailSubBtn},
};

struct Offer {
    const char* kind;
    bool servesLimitedTime;
    bool needsTitle;
};

constexpr Offer kOffers[] = {{"Banner", true, true}, {"Locked mask", false, true}, {"Exclusive mask", false, false}};

Rule SourceRule(const CPremiumUIAccessData& record) {
    return {"activation source"_q, right_text::Source(record.nActivationSource), right_text::Source(ZRPremiumSourceVip),
            record.nActivationSource == ZRPremiumSourceVip};
}

Rule OfferTypeRule(const CPremiumUIAccessData& record, bool servesLimitedTime) {
    const int type = record.nActivationType;
    const bool passes = type == ZRPremiumActivationFrozen || type == ZRPremiumActivationNotActivated ||
                        type == ZRPremiumActivationReady ||
                        (servesLimitedTime && type == ZRPremiumActivationLimitedTime);
    return {"activation type"_q, right_text::Activation(type),
            servesLimitedTime ? "limited time, frozen, not activated or ready"_q : "frozen, not activated or ready"_q,
            passes};
}

Rule TextRule(const CPremiumUIAccessData& record, const TextSet& set, bool needsTitle) {
    QStringList missing;
    if (needsTitle && (record.*set.title).isEmpty()) {
        missing << "no title"_q;
    }
    if ((record.*set.button).isEmpty()) {
        missing << "no button text"_q;
    }
    return {"texts"_q, missing.isEmpty() ? "complete"_q : missing.join(", "_q),
            needsTitle ? "title and button text"_q : "button text"_q, missing.isEmpty()};
}

}  // namespace

const Rule* Widget::Refusing() const {
    const auto rule = std::find_if(rules.begin(), rules.end(), [](const Rule& one) { return !one.passes; });
    return rule == rules.end() ? nullptr : &*rule;
}

std::vector<Widget> Of(const CPremiumUIAccessData& record, bool isNewSystem) {
    const int type = record.nActivationType;
    std::vector<Widget> widgets{
        {"Icon"_q,
         QString(),
         {{"newer system"_q, right_text::YesNo(isNewSystem), right_text::YesNo(false), !isNewSystem},
          SourceRule(record),
          {"activation type"_q, right_text::Activation(type), "any but 0"_q, type != 0}}},
        {"Tag"_q,
         QString(),
         {SourceRule(record),
          {"activation type"_q, right_text::Activation(type), right_text::Activation(ZRPremiumActivationFull),
           type == ZRPremiumActivationFull}}}};
    for (const Offer& offer : kOffers) {
        for (const TextSet& set : kTextSets) {
            widgets.push_back({QString::fromUtf8(offer.kind),
                               QString::fromUtf8(set.name),
                               {{"UI type"_q, record.strUIType, "D"_q, record.strUIType == QLatin1String("D")},
                                OfferTypeRule(record, offer.servesLimitedTime),
                                TextRule(record, set, offer.needsTitle)}});
        }
    }
    return widgets;
}

}  // namespace widget_rules
