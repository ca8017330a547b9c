#pragma once

#include <QPointer>
#include <map>
#include <vector>

#include "ui/IPictures.h"

/// A load as it was requested. `guard` may be gone and is for comparison only.
struct AskedPicture {
    int load = 0;
    std::string url;
    QSize size;  // device pixels
    bool moving = false;
    QObject* guard = nullptr;
};

std::ostream& operator<<(std::ostream& stream, const AskedPicture& asked);

/// Pictures; the test is the server. Answers run before the call that gives them returns. A load that no test looked
/// at (Asked, LastLoad, an answer to it) fails the test.
class CScriptedPictures : public IPictures {
public:
    const std::vector<AskedPicture>& Asked();

    /// Number of the last load, from 1. 0 if there was none.
    int LastLoad();

    /// Succeeds with a picture in one colour and of the requested size. It does nothing for an ended load and for one
    /// whose guard is gone. An unknown number fails the test.
    void Succeed(int load, const QColor& color = Qt::red);

    void Succeed(int load, std::shared_ptr<const Picture> picture);

    /// Fails a load without a picture.
    void Fail(int load);

    /// The last waiting load of that URL. Fails the test if there is none.
    void SucceedUrl(const std::string& url);
    void FailUrl(const std::string& url);

    /// Each later load succeeds inside the call that starts it and counts as looked at. Real pictures never arrive so
    /// early, but widgets must handle it.
    void AnswerAtOnce() { m_bAtOnce = true; }

    /// Number of waiting loads whose guard lives.
    int OutstandingCount() const;

    /// Marks all loads as looked at and clears the record.
    void Forget();

    /// Fails the test for each load that no test looked at.
    void CheckAllLookedAt();

    void Load(const QString& url, const QSize& size, bool moving, QObject* guard, Done done) override;

    /// A picture with one frame in one colour.
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
