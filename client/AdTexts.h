#pragma once

#include "ClientTexts.h"

/// The client's texts on ads: their ids in the language packs.
namespace texts {

constexpr EnText kAdSlot{900537};
constexpr EnText kAdLastRequest{900538};
constexpr EnText kAdNext{900539};
constexpr EnText kAdLastAnswer{900540};
constexpr EnText kAdKept{900541};
constexpr EnText kAdLastEvent{900542};
constexpr EnText kAdPopup{900543};
constexpr EnText kAdBanner{900544};
constexpr EnText kAdOtherType{900545};
constexpr EnText kAdNow{900546};
constexpr EnText kAdInSeconds{900547};
constexpr EnText kAdRequestId{900548};
constexpr EnText kAdAskedFor{900549};
constexpr EnText kAdNextRequest{900550};
constexpr EnText kAdRefusedSince{900551};
constexpr EnText kAdOutcomeWaiting{900552};
constexpr EnText kAdOutcomeArrived{900553};
constexpr EnText kAdOutcomeNoTask{900554};
constexpr EnText kAdOutcomeSuperseded{900555};
constexpr EnText kAdOutcomeExchange{900556};
constexpr EnText kAdOutcomeNoJson{900557};
constexpr EnText kAdOutcomeNotDecoded{900558};
constexpr EnText kAdOutcomeRefused{900559};
constexpr EnText kAdOutcomeGood{900560};
constexpr EnText kAdReason{900561};
constexpr EnText kAdWholeList{900562};
constexpr EnText kAdVerdictType{900563};
constexpr EnText kAdVerdictEmpty{900564};
constexpr EnText kAdVerdictNone{900565};
constexpr EnText kAdAds{900566};
constexpr EnText kAdStanding{900567};
constexpr EnText kAdFateUnknown{900568};
constexpr EnText kAdFateKept{900569};
constexpr EnText kAdFateCleared{900570};
constexpr EnText kAdFateFiltered{900571};
constexpr EnText kAdFateTooEarly{900572};
constexpr EnText kAdFateOver{900573};
constexpr EnText kAdFateExpired{900574};
constexpr EnText kAdFateForeignType{900575};
constexpr EnText kAdFateForeignPosition{900576};
constexpr EnText kAdFateNotDecoded{900577};
constexpr EnText kAdFateRefused{900578};
constexpr EnText kAdFateUnshowable{900579};
constexpr EnText kAdFateSuperseded{900580};
constexpr EnText kAdLookedAt{900581};
constexpr EnText kAdWindow{900582};
constexpr EnText kAdExpires{900583};
constexpr EnText kAdPicture{900584};
constexpr EnText kAdScreen{900585};
constexpr EnText kAdExposure{900586};
constexpr EnText kAdExposeCall{900587};
constexpr EnText kAdClick{900588};
constexpr EnText kAdCloseButton{900589};
constexpr EnText kAdClosed{900590};
constexpr EnText kAdRuns{900591};
constexpr EnText kAdMilliseconds{900592};
constexpr EnText kAdReportRefused{900593};
constexpr EnText kAdNoExposure{900594};
constexpr EnText kAdJumped{900595};
constexpr EnText kAdNotJumped{900596};
constexpr EnText kAdTold{900597};
constexpr EnText kAdClosedBy{900598};
constexpr EnText kAdNothingSeen{900599};
constexpr EnText kAdSearch{900600};
constexpr EnText kAdCheck{900601};
constexpr EnText kAdAsked{900602};
constexpr EnText kAdPanel{900735};
constexpr EnText kAdPanelNoModule{900737};

/// They are among `All()` too.
const std::vector<TextEntry>& OfAds();

}  // namespace texts
