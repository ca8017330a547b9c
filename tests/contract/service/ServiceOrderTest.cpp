// The slots of the service's operations, which callers of other libraries depend on.
#include <cxxabi.h>
#include <gmock/gmock.h>

#include <QRegularExpression>
#include <map>

#include "modules/IZRGrowthModuleInterface.h"
#include "support/PlaceOf.h"

using namespace ::testing;

namespace {

/// The operations from slot 3 on. An overloaded one has its parameters.
const std::vector<std::string> kOperations = {
    "GetAdBannerAsync",
    "UpdateAdBottomPopupCoordinates",
    "GetAdBottomPopupDeveloperView",
    "GetUiMsgAndPremiumAccessReq(bool)",
    "GetUiMsgAndPremiumAccessReq(QVector<int> const&, bool)",
    "GetUiMsgAndPremiumAccessReq(QVector<EnPremiumAccess> const&, bool)",
    "GetUIData",
    "GetAccessData",
    "GetUIAccessData(EnPremiumAccess) const",
    "GetUIAccessData() const",
    "SetUIAccessData",
    "GetPremiumTimeActivationStateWidget",
    "GetPremiumMenuEntryAction",
    "GetVipMenuEntryAction",
    "GetVipTitleBarEntryWidget",
    "HasVipQualification",
    "GetVipGrade",
    "GetVipState",
    "IsNewVipSystem",
    "GetVipEngineStatus",
    "GetNewVipState",
    "IsVipIconEnabled",
    "GetVipIcon",
    "GetVipIconImageName",
    "GetVipIconImageSize",
    "IsVipTagEnabled",
    "GetVipTag",
    "GetVipTagImageName",
    "GetVipTagImageSize",
    "IsVipBannerEnabled",
    "GetVipBanner",
    "IsVipMaskEnabled",
    "GetVipMask",
    "HandleVipWidgetClicked",
    "OpenVipWebPage",
    "IsAIChatEnable",
    "OpenAIChatPage",
    "InvokeAIChatWebJSAPI",
    "RegisterAIChatNativeJSAPI",
    "RespondToNativeJSAPI",
    "UnregisterAIChatNativeJSAPI",
    "SetAIChatDevelopEnableType",
};

constexpr int kFirstSlot = 3;

TEST(ServiceOrderTest, PointerToEachOperationHoldsItsSlot) {
    using S = IZRGrowthModuleInterface;
    const std::map<std::string, std::ptrdiff_t> slots = {
        {"GetAdBannerAsync", PlaceOf(&S::GetAdBannerAsync)},
        {"UpdateAdBottomPopupCoordinates", PlaceOf(&S::UpdateAdBottomPopupCoordinates)},
        {"GetAdBottomPopupDeveloperView", PlaceOf(&S::GetAdBottomPopupDeveloperView)},
        {"GetUiMsgAndPremiumAccessReq(bool)",
         PlaceOf(static_cast<unsigned long (S::*)(bool)>(&S::GetUiMsgAndPremiumAccessReq))},
        {"GetUiMsgAndPremiumAccessReq(QVector<int> const&, bool)",
         PlaceOf(static_cast<unsigned long (S::*)(const QVector<int>&, bool)>(&S::GetUiMsgAndPremiumAccessReq))},
        {"GetUiMsgAndPremiumAccessReq(QVector<EnPremiumAccess> const&, bool)",
         PlaceOf(static_cast<unsigned long (S::*)(const QVector<EnPremiumAccess>&, bool)>(
             &S::GetUiMsgAndPremiumAccessReq))},
        {"GetUIData", PlaceOf(&S::GetUIData)},
        {"GetAccessData", PlaceOf(&S::GetAccessData)},
        {"GetUIAccessData(EnPremiumAccess) const",
         PlaceOf(static_cast<CPremiumUIAccessData (S::*)(EnPremiumAccess) const>(&S::GetUIAccessData))},
        {"GetUIAccessData() const",
         PlaceOf(static_cast<QMap<EnPremiumAccess, CPremiumUIAccessData> (S::*)() const>(&S::GetUIAccessData))},
        {"SetUIAccessData", PlaceOf(&S::SetUIAccessData)},
        {"GetPremiumTimeActivationStateWidget", PlaceOf(&S::GetPremiumTimeActivationStateWidget)},
        {"GetPremiumMenuEntryAction", PlaceOf(&S::GetPremiumMenuEntryAction)},
        {"GetVipMenuEntryAction", PlaceOf(&S::GetVipMenuEntryAction)},
        {"GetVipTitleBarEntryWidget", PlaceOf(&S::GetVipTitleBarEntryWidget)},
        {"HasVipQualification", PlaceOf(&S::HasVipQualification)},
        {"GetVipGrade", PlaceOf(&S::GetVipGrade)},
        {"GetVipState", PlaceOf(&S::GetVipState)},
        {"IsNewVipSystem", PlaceOf(&S::IsNewVipSystem)},
        {"GetVipEngineStatus", PlaceOf(&S::GetVipEngineStatus)},
        {"GetNewVipState", PlaceOf(&S::GetNewVipState)},
        {"IsVipIconEnabled", PlaceOf(&S::IsVipIconEnabled)},
        {"GetVipIcon", PlaceOf(&S::GetVipIcon)},
        {"GetVipIconImageName", PlaceOf(&S::GetVipIconImageName)},
        {"GetVipIconImageSize", PlaceOf(&S::GetVipIconImageSize)},
        {"IsVipTagEnabled", PlaceOf(&S::IsVipTagEnabled)},
        {"GetVipTag", PlaceOf(&S::GetVipTag)},
        {"GetVipTagImageName", PlaceOf(&S::GetVipTagImageName)},
        {"GetVipTagImageSize", PlaceOf(&S::GetVipTagImageSize)},
        {"IsVipBannerEnabled", PlaceOf(&S::IsVipBannerEnabled)},
        {"GetVipBanner", PlaceOf(&S::GetVipBanner)},
        {"IsVipMaskEnabled", PlaceOf(&S::IsVipMaskEnabled)},
        {"GetVipMask", PlaceOf(&S::GetVipMask)},
        {"HandleVipWidgetClicked", PlaceOf(&S::HandleVipWidgetClicked)},
        {"OpenVipWebPage", PlaceOf(&S::OpenVipWebPage)},
        {"IsAIChatEnable", PlaceOf(&S::IsAIChatEnable)},
        {"OpenAIChatPage", PlaceOf(&S::OpenAIChatPage)},
        {"InvokeAIChatWebJSAPI", PlaceOf(&S::InvokeAIChatWebJSAPI)},
        {"RegisterAIChatNativeJSAPI", PlaceOf(&S::RegisterAIChatNativeJSAPI)},
        {"RespondToNativeJSAPI", PlaceOf(&S::RespondToNativeJSAPI)},
        {"UnregisterAIChatNativeJSAPI", PlaceOf(&S::UnregisterAIChatNativeJSAPI)},
        {"SetAIChatDevelopEnableType", PlaceOf(&S::SetAIChatDevelopEnableType)},
    };
    ASSERT_THAT(kOperations, SizeIs(42));
    ASSERT_THAT(slots, SizeIs(42));
    for (int i = 0; i < 42; ++i) {
        EXPECT_EQ(slots.at(kOperations[i]), kFirstSlot + i) << kOperations[i];
    }
    EXPECT_EQ(PlaceOf(&S::SupportMultiThread), 2);
}

QStringList OutputOf(const char* command) {
    FILE* pipe = popen(command, "r");
    QByteArray output;
    char part[65536];
    while (const size_t size = fread(part, 1, sizeof(part), pipe)) {
        output.append(part, int(size));
    }
    EXPECT_EQ(pclose(pipe), 0) << command;
    return QString::fromLatin1(output).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

std::string Demangled(const QString& symbol) {
    int status = 0;
    char* name = abi::__cxa_demangle(symbol.toLatin1().constData(), nullptr, nullptr, &status);
    const std::string text = name ? name : symbol.toStdString();
    free(name);
    return text;
}

/// The entries of the table of CZRGrowthModuleUtil in the built library, from the two before slot 0 on.
std::vector<std::string> TableOfTheLibrary() {
    std::map<quint64, QString> functions;
    quint64 begin = 0;
    quint64 size = 0;
    for (const QString& line : OutputOf("readelf -sW " ZR_MODULE)) {
        const QStringList words = line.simplified().split(QLatin1Char(' '));
        if (words.size() < 8) {
            continue;
        }
        const quint64 address = words[1].toULongLong(nullptr, 16);
        if (words[7] == QLatin1String("_ZTV19CZRGrowthModuleUtil")) {
            begin = address;
            size = words[2].toULongLong(nullptr, 0);
        } else if (words[3] == QLatin1String("FUNC")) {
            functions[address] = words[7];
        }
    }
    EXPECT_NE(begin, 0u) << "the library has no symbols";
    std::vector<std::string> table(size / sizeof(void*));
    for (const QString& line : OutputOf("readelf -rW " ZR_MODULE)) {
        const QStringList words = line.simplified().split(QLatin1Char(' '));
        bool isAddress = false;
        const quint64 place = words[0].toULongLong(&isAddress, 16);
        if (!isAddress || place < begin || place >= begin + size) {
            continue;
        }
        const bool isLocal = words[2] == QLatin1String("R_X86_64_RELATIVE");
        const QString symbol =
            isLocal ? functions[words[3].toULongLong(nullptr, 16)] : words[4].section(QLatin1Char('@'), 0, 0);
        table[(place - begin) / sizeof(void*)] = Demangled(symbol);
    }
    return table;
}

TEST(ServiceOrderTest, TableOfTheBuiltLibraryNamesTheSameOperations) {
    const std::vector<std::string> table = TableOfTheLibrary();

    const size_t slot0 = 2;
    ASSERT_THAT(table, SizeIs(slot0 + kFirstSlot + 42));
    EXPECT_EQ(table[slot0], "CZRGrowthModuleUtil::~CZRGrowthModuleUtil()");
    EXPECT_EQ(table[slot0 + 1], "CZRGrowthModuleUtil::~CZRGrowthModuleUtil()");
    EXPECT_EQ(table[slot0 + 2], "IZRPluginInterface::SupportMultiThread()");
    for (size_t i = 0; i < kOperations.size(); ++i) {
        const bool isOverload = kOperations[i].find('(') != std::string::npos;
        EXPECT_THAT(table[slot0 + kFirstSlot + i],
                    StartsWith("CZRGrowthModuleUtil::" + kOperations[i] + (isOverload ? "" : "(")));
    }
}

}  // namespace
