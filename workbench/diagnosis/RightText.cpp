#include "workbench/diagnosis/RightText.h"

#include <json/writer.h>

#include "framework/JsonText.h"
#include "workbench/WireDecoder.h"
#include "workbench/diagnosis/Literal.h"

namespace right_text {
namespace {

struct Word {
    int number;
    const char* text;
};

constexpr Word kActivations[] = {
    {0, "not said"}, {1, "limited time"}, {2, "frozen"}, {3, "full"}, {4, "empty"}, {5, "not activated"}, {6, "ready"},
};

constexpr Word kSources[] = {
    {0, "not said"},
    {1, "premium rule"},
    {2, "VIP rule"},
    {3, "private customer"},
};

constexpr Word kOldStates[] = {{0, "no member"}, {1, "member"}};

constexpr Word kNewStates[] = {{0, "no member"}, {1, "member"}, {2, "expired"}};

constexpr Word kEngines[] = {
    {kVipEngineUndetermined, "undetermined"},        {kVipEngineTrial, "on trial"},  {kVipEngineMember, "member"},
    {kVipEngineAssetProtection, "asset protection"}, {kVipEngineExpired, "expired"}, {kVipEngineNonMember, "no member"},
    {kVipEngineRenewalOff, "member, renewal off"},
};

template <size_t kCount>
QString AsText(const Word (&words)[kCount], int number, EnForm form = EnForm::NumberAndWord) {
    for (const Word& word : words) {
        if (word.number == number) {
            return form == EnForm::Word ? QString::fromUtf8(word.text)
                                        : "%1 \u00B7 %2"_q.arg(number).arg(QString::fromUtf8(word.text));
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
    return yes ? "yes"_q : "no"_q;
}

QString Activation(int type, EnForm form) {
    return AsText(kActivations, type, form);
}

QString Source(int source, EnForm form) {
    return AsText(kSources, source, form);
}

QString OldState(int state) {
    return AsText(kOldStates, state);
}

QString NewState(int state) {
    return AsText(kNewStates, state);
}

QString Engine(ZRVipEngineStatus status) {
    return AsText(kEngines, status);
}

std::vector<FieldNode> Fields(const CPremiumUIAccessData& record) {
    return {{"CPremiumAccessData"_q,
             QString(),
             std::nullopt,
             {Node("enAccess", record.enAccess), Node("bHasPermission", YesNo(record.bHasPermission)),
              Node("nActivationType", Activation(record.nActivationType)), Node("nDaysLeft", record.nDaysLeft),
              Node("nActivationSource", Source(record.nActivationSource))}},
            {"CPremiumUIData"_q,
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

}  // namespace right_text
