#include "Ad/Controller/PopupRules.h"

#include <algorithm>

bool operator==(const PopupState& left, const PopupState& right) {
    return left.list == right.list && left.view == right.view && left.loading == right.loading &&
           left.shown == right.shown && left.closesIn == right.closesIn && left.lastShow == right.lastShow &&
           left.open == right.open && left.requests == right.requests;
}

std::ostream& operator<<(std::ostream& stream, const PopupState& state) {
    stream << "list " << (state.list.empty() ? "none" : state.list) << (state.view ? ", view" : ", no view")
           << (state.loading ? " loading" : "") << (state.shown ? " shown" : "");
    if (state.closesIn) {
        stream << ", closes in " << *state.closesIn << " ms";
    }
    stream << ", last show " << state.lastShow << ", open";
    for (const std::string& ad : state.open) {
        stream << " " << ad;
    }
    return stream << ", requests " << state.requests;
}

// The login's channel is there, and its request has left.
CPopupRules::CPopupRules(int64_t now, const PopupTimes& times) : m_times(times), m_nNow(now) {
    Request();
}

void CPopupRules::Happen(PopupEvent event) {
    switch (event) {
        case PopupEvent::kAnswer:
            Answer();
            return;
        case PopupEvent::kOffline:
            Offline(OfflineAd());
            return;
        case PopupEvent::kOfflineWaiting:
            Offline(OfflineWaitingAd());
            return;
        case PopupEvent::kNewAd:
            Request();
            return;
        case PopupEvent::kTab:
            ChangeTab();
            return;
        case PopupEvent::kLanguage:
            ChangeLanguage();
            return;
        case PopupEvent::kLogout:
            LogOut();
            return;
        case PopupEvent::kPicture:
            PictureComes();
            return;
        case PopupEvent::kNoPicture:
            PictureFails();
            return;
        case PopupEvent::kTime:
            TimePasses();
            return;
    }
}

PopupState CPopupRules::State() const {
    PopupState state;
    state.list = m_list;
    state.view = !m_view.empty();
    state.loading = state.view && !m_bShown;
    state.shown = m_bShown;
    if (m_closeAt) {
        state.closesIn = (*m_closeAt - m_nNow) * 1000;
    }
    state.lastShow = m_nLastShow;
    for (const auto& [ad, open] : m_open) {
        if (open) {
            state.open.push_back(ad);
        }
    }
    state.requests = m_nRequests;
    return state;
}

std::string CPopupRules::OfflineWaitingAd() const {
    return m_onScreen.empty() || m_list.empty() || m_list == m_onScreen ? "unknown" : m_list;
}

// Ten full seconds lie between two requests. A new one makes the answer to an old one nobody's.
void CPopupRules::Request() {
    if (m_nNow - m_nLastRequest < kRequestLimit) {
        return;
    }
    m_nLastRequest = m_nNow;
    ++m_nRequests;
    m_bWaiting = true;
}

// Nothing cancels a request: an answer counts after a logout as well.
void CPopupRules::Answer() {
    if (!m_bWaiting) {
        return;
    }
    m_bWaiting = false;
    ++m_nAnswers;
    m_list = LastAd();
    if (MayShow()) {
        Show();
    }
}

bool CPopupRules::MayShow() const {
    const bool isIntervalOver = m_times.showInterval == 0 || m_nNow - m_nLastShow > m_times.showInterval;
    return !m_list.empty() && m_bGoodTab && isIntervalOver;
}

// An earlier view disappears without an end of its exposure, which is still stored under its ad's id.
void CPopupRules::Show() {
    DropView();
    m_view = m_list;
    m_nFailures = 0;
}

void CPopupRules::DropView() {
    m_view.clear();
    m_bShown = false;
    m_closeAt.reset();
}

void CPopupRules::EndExposure() {
    m_open[m_onScreen] = false;
}

void CPopupRules::Clear() {
    m_list.clear();
    m_onScreen.clear();
}

void CPopupRules::Close(bool isLogout) {
    const bool hadView = !m_view.empty();
    DropView();
    if ((hadView || isLogout) && !m_onScreen.empty()) {
        EndExposure();
        Clear();
    }
}

// The shown ad and the waiting list are checked separately and at once; new ads are requested later.
void CPopupRules::Offline(const std::string& ad) {
    m_requestAt.push_back(m_nNow + m_times.offlineDelay);
    if (ad.empty()) {
        return;
    }
    const std::string waiting = m_list;
    if (m_onScreen == ad) {
        Close(false);
        m_list = waiting;
    }
    if (m_list == ad) {
        m_list.clear();
    }
}

// The first change only sets the current tab.
void CPopupRules::ChangeTab() {
    m_bGoodTab = !m_bGoodTab;
    if (!m_bTabKnown) {
        m_bTabKnown = true;
        return;
    }
    Close(false);
    if (MayShow()) {
        Show();
    }
}

// Where the limit refuses the new request, the answer to the old one still counts.
void CPopupRules::ChangeLanguage() {
    Close(false);
    Clear();
    Request();
}

void CPopupRules::LogOut() {
    Close(true);
    Clear();
}

// One notice for each load, and what is shown loads nothing more.
void CPopupRules::PictureComes() {
    if (m_view.empty() || m_bShown) {
        return;
    }
    if (!MayShow()) {
        DropView();
        return;
    }
    m_bShown = true;
    m_onScreen = m_view;
    m_open[m_onScreen] = true;
    if (m_times.showDuration > 0) {
        m_closeAt = m_nNow + m_times.showDuration;
    }
    m_nLastShow = m_nNow;
}

// The list stays for another occasion.
void CPopupRules::PictureFails() {
    if (!m_view.empty() && !m_bShown && ++m_nFailures == kPictureAttempts) {
        DropView();
    }
}

void CPopupRules::TimePasses() {
    const int64_t end = m_nNow + kTimeStep;
    for (;;) {
        const auto request = std::min_element(m_requestAt.begin(), m_requestAt.end());
        const int64_t requestAt = request == m_requestAt.end() ? end + 1 : *request;
        const int64_t closeAt = m_closeAt.value_or(end + 1);
        if (std::min(requestAt, closeAt) > end) {
            break;
        }
        m_nNow = std::min(requestAt, closeAt);
        if (requestAt <= closeAt) {
            m_requestAt.erase(request);
            Request();
        } else {
            Close(false);
        }
    }
    m_nNow = end;
}
