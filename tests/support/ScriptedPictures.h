#pragma once

#include <QPointer>
#include <map>
#include <vector>

#include "ui/IPictures.h"

/// A picture as it was asked for. `guard` is for comparison only: it may be gone.
struct AskedPicture {
    int load = 0;
    std::string url;
    QSize size;  // device pixels
    bool moving = false;
    QObject* guard = nullptr;
};

std::ostream& operator<<(std::ostream& stream, const AskedPicture& asked);

/// Pictures with the test at their other end. Answers run before the call that gives them returns. A load that no
/// test looked at (Asked, LastLoad, an answer to it) fails the test.
class CScriptedPictures : public IPictures {
public:
    const std::vector<AskedPicture>& Asked();

    /// Numbers begin at 1; 0 if nothing was asked for.
    int LastLoad();

    /// Ends a load with a picture in one colour, of the size that was asked for. One that has ended, or whose guard
    /// is gone, does nothing; one that never was fails the test.
    void Succeed(int load, const QColor& color = Qt::red);

    void Succeed(int load, std::shared_ptr<const Picture> picture);

    /// Ends it without a picture.
    void Fail(int load);

    /// The last one for that address which still waits; fails the test if there is none.
    void SucceedUrl(const std::string& url);
    void FailUrl(const std::string& url);

    /// From now on each load succeeds inside the call that begins it, which counts as looking at it. Pictures do not
    /// come so from the web; who shows them is to bear it all the same.
    void AnswerAtOnce() { m_bAtOnce = true; }

    /// Loads that wait for an answer and whose guard lives.
    int OutstandingCount() const;

    /// Counts as looking, and empties the record.
    void Forget();

    /// Fails the test for each load that nobody looked at.
    void CheckAllLookedAt();

    void Load(const QString& url, const QSize& size, bool moving, QObject* guard, Done done) override;

    /// In one colour, still.
    static std::shared_ptr<const Picture> Plain(const QSize& size, const QColor& color);

private:
    struct Outstanding {
        std::string url;
        QSize size;
        QPointer<QObject> guard;
        Done done;
    };

    void Complete(int load, const std::shared_ptr<const Picture>& picture);
    int WaitingFor(const std::string& url) const;
    void LookAt(int load);

    bool m_bAtOnce = false;
    int m_nLastLoad = 0;
    std::vector<AskedPicture> m_asked;
    std::vector<bool> m_lookedAt;  // beside m_asked
    std::map<int, Outstanding> m_outstanding;
};
