#pragma once

#include <functional>
#include <string>
#include <vector>

#include "core/IUrlOpener.h"
#include "support/Failing.h"

/// A URL as it was asked for. `context` is for comparison only: it may be gone.
struct OpenedUrl {
    std::string url;
    int businessType = 0;
    int fallbackMode = 0;
    QObject* context = nullptr;
    QVariant extra;
};

/// Opens nothing and keeps what was asked for; true for what the contract allows. A URL that no test looked at
/// (Opened) fails the test, refused or not.
class CScriptedUrls : public IUrlOpener {
public:
    const std::vector<OpenedUrl>& Opened();

    /// The calls that `which` names give false and write the line of a refusal; they are kept all the same.
    void RefuseOpens(Failing which) { m_refused = which; }

    /// Runs inside each call from now on, ahead of its answer: a page that is turned to may take others away.
    void WhenOpening(std::function<void()> act) { m_fnWhenOpening = std::move(act); }

    /// Counts as looking, and empties the record.
    void Forget();

    /// Fails the test for each URL that nobody looked at.
    void CheckAllLookedAt();

    bool Open(const UrlRequest& request) override;

private:
    std::vector<OpenedUrl> m_opened;
    size_t m_nLookedAt = 0;
    Failing m_refused = Failing::Never();
    std::function<void()> m_fnWhenOpening;
};
