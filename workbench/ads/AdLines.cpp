#include "workbench/ads/AdLines.h"

#include <QRegularExpression>
#include <array>
#include <utility>

#include "workbench/ReadableBytes.h"

namespace ad_lines {
namespace {

struct Pattern {
    EnLine line;
    QString begin;  // up to the first placeholder; comparing it avoids most expressions
    QRegularExpression expression;
};

QRegularExpression ExpressionOf(const char* line) {
    // The keys are the table's placeholders after escaping.
    static const std::array<std::pair<QString, QString>, 3> marks{
        std::make_pair(QStringLiteral("\\{n\\}"), QStringLiteral("(-?\\d+)")),
        std::make_pair(QStringLiteral("\\{w\\}"), QStringLiteral("(\\S+)")),
        std::make_pair(QStringLiteral("\\{\\}"), QStringLiteral("(.*)"))};
    QString expression = QRegularExpression::escape(QString::fromLatin1(line));
    for (const auto& [mark, group] : marks) {
        expression.replace(mark, group);
    }
    return QRegularExpression(QRegularExpression::anchoredPattern(expression),
                              QRegularExpression::DotMatchesEverythingOption);
}

std::vector<Pattern> Patterns() {
    std::vector<Pattern> patterns;
    for (const Line& line : All()) {
        const QString text = QString::fromLatin1(line.text);
        patterns.push_back({line.line, text.left(text.indexOf(QLatin1Char('{'))), ExpressionOf(line.text)});
    }
    return patterns;
}

}  // namespace

const std::vector<Line>& All() {
    static const std::vector<Line> lines{
        {EnLine::Limited,
         "[Ad] Request ad limited. currentTimeStamp = {n}, lastRequestTimeStamp = {n}, requestInterval = {n}, "
         "adType = {n}, adPosition = {n}"},
        {EnLine::Asked,
         "[Ad] Request ad start, path = {w}, adType = {n}, adPosition = {n}, adIdList = {}, requestId = {}"},
        {EnLine::NoTask,
         "[Ad] Request ad failed, requestTaskId = 0, path = {w}, adType = {n}, adPosition = {n}, requestId = {}"},
        {EnLine::Superseded,
         "[Ad] Request ad callback, requestTaskId unmatched, path = {w}, adType = {n}, adPosition = {n}, "
         "requestId = {}, currentTaskId = {n}, callbackTaskId = {n}"},
        {EnLine::ExchangeFailed,
         "[Ad] Request ad failed, path = {w}, result = {n}, adType = {n}, adPosition = {n}, requestId = {}"},
        {EnLine::NoJson,
         "[Ad] Request ad failed, path = {w}, body parse failed, adType = {n}, adPosition = {n}, requestId = {}"},
        {EnLine::NotDecoded,
         "[Ad] Request ad failed, path = {w}, response model decode failed, adType = {n}, adPosition = {n}, "
         "requestId = {}"},
        {EnLine::Refused,
         "[Ad] Request ad failed, path = {w}, code = {n}, message= {}, adType = {n}, adPosition = {n}, "
         "requestId = {}"},
        {EnLine::Answered, "[Ad] Request ad succeed, path = {w}, adType = {n}, adPosition = {n}, requestId = {}"},
        {EnLine::Undecodable, "[Ad] {w} decode failed, {} is unvalid"},
        {EnLine::TooEarly,
         "[Ad] CurrentTime < startTime, currentTime = {n}, startTime = {n}, adType = {n}, adPosition = {n}, "
         "remove adId = {}"},
        {EnLine::Over,
         "[Ad] CurrentTime > endTime, currentTime = {n}, endTime = {n}, adType = {n}, adPosition = {n}, "
         "remove adId = {}"},
        {EnLine::Expired,
         "[Ad] CurrentTime > expireTime, currentTime = {n}, expireTime = {n}, adType = {n}, adPosition = {n}, "
         "remove adId = {}"},
        {EnLine::ForeignType,
         "[Ad] Ad type unmatch, adType_local = {n}, adType_svr = {n}, adPosition_local = {n}, adPosition_svr = {n}"},
        {EnLine::ForeignPosition,
         "[Ad] Ad position unmatch, adType = {n}, adPosition_svr = {n}, adPosition_local = {n}"},
        {EnLine::EmptyList, "[Ad] Ad list is empty, adType = {n}, adPosition = {n}"},
        {EnLine::NoneValid, "[Ad] Ad list has no valid ad. adType = {n}, adPosition = {n}"},
        {EnLine::Cleared, "[Ad] Clear ad data. adType = {n}, adPosition = {n}, adId = {}"},
        {EnLine::Closed, "[Ad] Closed ad by {}. adType = {n}, adPosition = {n}, adId = {}"},
        {EnLine::ExposeSent,
         "[Ad] Expose ad start, path = {w}, adType = {n}, adPosition = {n}, adId = {}, exposeId = {}, "
         "exposeDuration = {n}, pushId = {}"},
        {EnLine::ExposeNoTask,
         "[Ad] Expose ad failed, path = {w}, ExposeTaskID  = 0, adType = {n}, adPosition = {n}, adId = {}, "
         "exposeId = {}"},
        {EnLine::ExposeFailed,
         "[Ad] Expose ad failed, path = {w}, result = {n}, adType = {n}, adPosition = {n}, adId = {}, exposeId = {}"},
        {EnLine::ExposeNoJson,
         "[Ad] Expose ad failed, path = {w}, body parse failed, errorCode = {n}, httpCode = {n}, adType = {n}, "
         "adPosition = {n}, adId = {}, exposeId = {}"},
        {EnLine::ExposeRefused,
         "[Ad] Expose ad failed, path = {w}, code = {n}, adType = {n}, adPosition = {n}, adId = {}, exposeId = {}"},
        {EnLine::ExposeTaken,
         "[Ad] Expose ad succeed, path = {w}, adType = {n}, adPosition = {n}, adId = {}, exposeId = {}"},
        {EnLine::ClickLost,
         "[Ad] Report ClickAd failed, exposeId is null. requestId = {}, actionType = {n}, adId = {}"},
        {EnLine::NoList, "[Ad] adModelList is null, m_adType = {n}, adPosition = {n}"},
        {EnLine::NoPopup, "[Ad] AdPopupModel is null, adType = {n}, adPosition = {n}"},
        {EnLine::NoAdId, "[Ad] AdId is null, adType = {n}, adPosition = {n}"},
        {EnLine::NoAreas, "[Ad] ShowAreas is null, adType = {n}, adPosition = {n}, adId = {}"},
        {EnLine::ListGood, "[Ad] Ad popup data is OK, adType = {n}, adPosition = {n}, adId = {}"},
        {EnLine::Try, "[Ad] Try show ad popup, adType = {n}, adPosition = {n}"},
        {EnLine::NoListNow, "[Ad] Cannot show ad popup, adModelList is null, m_adType = {n}, adPosition = {n}"},
        {EnLine::OtherTab,
         "[Ad] ShowAreas donot contain currentTab, currentTab = {n}, tabFrameKey = {n}, adType = {n}, adPosition = "
         "{n}, adId = {}"},
        {EnLine::WithinInterval,
         "[Ad] CurrentTime donot exceed showInterval. currentTime = {n}, lastShowTime = {n}, showInterval = {n}, "
         "adType = {n}, adPosition = {n}, adId = {}, key = {w}"},
        {EnLine::SlotTaken,
         "[Ad] Popup isnot allowed to show by uniform resource slot, adType = {n}, adPosition = {n}, adId = {}"},
        {EnLine::NoFocus, "[Ad] Main frame isnot focus in, adType = {n}, adPosition = {n}, adId = {}"},
        {EnLine::ShowNoList, "[Ad] Show ad popup Failed, adModelList is null, adType = {n}, adPosition = {n}"},
        {EnLine::ShowStart, "[Ad] Show ad popup start. adType = {n}, adPosition = {n}"},
        {EnLine::ShowElsewhere,
         "[Ad] Show ad popup failed, adPosition from svr is unknown, adType = {n}, adPosition = {n}, adPositionSvr = "
         "{n}"},
        {EnLine::ShowNoData, "[Ad] Show ad popup failed, data error, adType = {n}, adPosition = {n}"},
        {EnLine::CardNoPopup,
         "[Ad] AddAdBottomPopupView, adPopupModel is null, adType = {n}, adPosition = {n}, adId = {}"},
        {EnLine::CardNoPicture,
         "[Ad] AddAdBottomPopupView, adBottomPopupModel is null, adType = {n}, adPosition = {n}, adId = {}"},
        {EnLine::CardNoInterface,
         "[Ad] AddAdBottomPopupView, spMainFrameInterface is null, adType = {n}, adPosition = {n}, adId = {}"},
        {EnLine::CardNoFrame,
         "[Ad] AddAdBottomPopupView, MainFrame is null, adType = {n}, adPosition = {n}, adId = {}"},
        {EnLine::CardMade,
         "[Ad] Create CZRAdBottomPopupView, adType = {n}, adPosition = {n}, adId = {}, pushId = {}, enableClose = {w}, "
         "showDuration = {n}s"},
        {EnLine::CardGone, "[Ad] Delete AdPopupView, adType = {n}, adPosition = {n}, adId = {}"},
        {EnLine::PictureFailed, "[Ad] OnImageLoadFailed, adType = {n}, imageUrl = {}, loadCount = {n}, time = {n}"},
        {EnLine::PictureOfNone, "[Ad] OnImageLoadSucceeded, adId is null, adType = {n}, adPosition = {n}"},
        {EnLine::NoView, "[Ad] Show ad popup failed, adPopupView is null. adType = {n}, adPosition = {n}, adId = {}"},
        {EnLine::Shown, "[Ad] Show ad popup success. adType = {n}, adPosition = {n}, adId = {}, pushId = {}"},
        {EnLine::BannerNoLayout, "[Ad] Banner position is null, adType = {n}, m_adPosition = {n}"},
        {EnLine::BannerNoCaller, "[Ad] Banner complete callback is null, adType = {n}, adPosition = {n}"},
        {EnLine::BannerNoList, "[Ad] Show ad banner Failed, adModelList is null, adType = {n}, m_adPosition = {n}"},
        {EnLine::BannerNoAds, "[Ad] Show ad banner Failed, ad List is null, adType = {n}, adPosition = {n}"},
        {EnLine::BannerUnknown, "[Ad] Ad banner type is unknown, adType = {n}, adPosition = {n}, bannerType = {n}"},
        {EnLine::BannerMade, "[Ad] Create ad banner, adType = {n}, adPosition = {n}"},
        {EnLine::PushNew, "[Ad] AdPush callback,receive cmd 20171, adType = {n}, adPosition = {n}, delay = {n}"},
        {EnLine::PushChanged,
         "[Ad] AdStatusChangedPush callback,receive cmd 20145, adType = {n}, adPosition = {n}, offlineAdId = {}, delay "
         "= {n}"},
        {EnLine::PushCheck,
         "[Ad] AdCheckPush callback,receive cmd 20170, adType = {n}, adPosition = {n}, adId = {}, delay = {n}"},
        // Lines of well-formed pushes have no blank there.
        {EnLine::PushBad, "[Ad] AdPush callback, {}"},
        {EnLine::PushBad, "[Ad] AdStatusChangedPush callback, {}"},
        {EnLine::PushBad, "[Ad] AdCheckPush callback, {}"},
        {EnLine::LoggedOut, "[Ad] Login out"},
        {EnLine::OtherLanguage, "[Ad] Language changed"},
    };
    return lines;
}

std::optional<ParsedLine> Read(const QString& text) {
    if (!text.startsWith(QLatin1String("[Ad] "))) {
        return std::nullopt;
    }
    static const std::vector<Pattern> patterns = Patterns();
    for (const Pattern& pattern : patterns) {
        if (!text.startsWith(pattern.begin)) {
            continue;
        }
        const QRegularExpressionMatch match = pattern.expression.match(text);
        if (match.hasMatch()) {
            ParsedLine said{pattern.line, {}};
            for (int group = 1; group <= match.lastCapturedIndex(); ++group) {
                const QString value = match.captured(group);
                said.values << readable::FromLatin1(value).value_or(value);
            }
            return said;
        }
    }
    return std::nullopt;
}

}  // namespace ad_lines
