#include "workbench/rights/RightWords.h"

#include <json/writer.h>

#include "framework/JsonText.h"
#include "workbench/WireDecoder.h"

namespace right_words {
namespace {

using texts::Tr;

struct Word {
    int number;
    texts::EnText text;
};

constexpr Word kActivations[] = {
    {0, texts::kUnsaid},          {1, texts::kActivationLimited}, {2, texts::kActivationFrozen},
    {3, texts::kActivationFull},  {4, texts::kActivationEmpty},   {5, texts::kActivationNot},
    {6, texts::kActivationReady},
};

constexpr Word kSources[] = {
    {0, texts::kUnsaid},
    {1, texts::kSourcePremium},
    {2, texts::kSourceVip},
    {3, texts::kSourcePrivate},
};

constexpr Word kOldStates[] = {{0, texts::kVipNoMember}, {1, texts::kVipMember}};

constexpr Word kNewStates[] = {{0, texts::kVipNoMember}, {1, texts::kVipMember}, {2, texts::kVipExpired}};

constexpr Word kEngines[] = {
    {kVipEngineUndetermined, texts::kEngineUndetermined},
    {kVipEngineTrial, texts::kEngineTrial},
    {kVipEngineMember, texts::kVipMember},
    {kVipEngineAssetProtection, texts::kEngineProtection},
    {kVipEngineExpired, texts::kVipExpired},
    {kVipEngineNonMember, texts::kVipNoMember},
    {kVipEngineRenewalOff, texts::kEngineRenewalOff},
};

template <size_t kCount>
QString InWords(const Word (&words)[kCount], int number, EnForm form = EnForm::NumberAndWord) {
    for (const Word& word : words) {
        if (word.number == number) {
            return form == EnForm::Word ? Tr(word.text) : QStringLiteral("%1 \u00B7 %2").arg(number).arg(Tr(word.text));
        }
    }
    return QString::number(number);
}

FieldNode Node(const char* name, const QString& value) {
    return {QString::fromLatin1(name), value, std::nullopt, {}};
}

FieldNode Node(const char* name, int value) {
    return Node(name, QString::number(value));
}

}  // namespace

QString Name(const CWireDecoder& decoder, int right) {
    return decoder.EnumName("web_premium_access.PremiumAccess", right);
}

QString YesNo(bool yes) {
    return Tr(yes ? texts::kYes : texts::kNo);
}

QString Activation(int type, EnForm form) {
    return InWords(kActivations, type, form);
}

QString Source(int source, EnForm form) {
    return InWords(kSources, source, form);
}

QString OldState(int state) {
    return InWords(kOldStates, state);
}

QString NewState(int state) {
    return InWords(kNewStates, state);
}

QString Engine(ZRVipEngineStatus status) {
    return InWords(kEngines, status);
}

std::vector<FieldNode> Fields(const CPremiumUIAccessData& record) {
    return {{QStringLiteral("CPremiumAccessData"),
             QString(),
             std::nullopt,
             {Node("enAccess", record.enAccess), Node("bHasPermission", YesNo(record.bHasPermission)),
              Node("nActivationType", Activation(record.nActivationType)), Node("nDaysLeft", record.nDaysLeft),
              Node("nActivationSource", Source(record.nActivationSource))}},
            {QStringLiteral("CPremiumUIData"),
             QString(),
             std::nullopt,
             {Node("enUIAccess", record.enUIAccess), Node("strUIType", record.strUIType),
              Node("strMainTitle", record.strMainTitle), Node("strMainBtn", record.strMainBtn),
              Node("strDetailTitle", record.strDetailTitle), Node("strDetailSubTitle", record.strDetailSubTitle),
              Node("strDetailBtn", record.strDetailBtn), Node("strDetailSubBtn", record.strDetailSubBtn),
              Node("nMainBtnUrlID", record.nMainBtnUrlID), Node("nDetailBtnUrlID", record.nDetailBtnUrlID),
              Node("nDetailSubBtnUrlID", record.nDetailSubBtnUrlID)}}};
}

QString Pretty(const QString& otherInfo) {
    std::string error;
    const auto json = host::ParseJson(otherInfo.toStdString(), error);
    if (!json) {
        return otherInfo;
    }
    Json::StreamWriterBuilder builder;
    builder["indentation"] = "  ";
    builder["emitUTF8"] = true;
    return QString::fromStdString(Json::writeString(builder, *json));
}

}  // namespace right_words
