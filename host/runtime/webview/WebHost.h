#pragma once

#include <QObject>
#include <QTimer>

#include "framework/export.h"
#include "tracing/TraceEvent.h"

class IWebView;

namespace host::web {

/// The state that all web widgets share: when the engine may be loaded, for which user pages are loaded, and how
/// many windows are open. Main thread.
class ZRHOST_API CWebHost : public QObject {
    Q_OBJECT

public:
    /// Windows of web pages that may be open when a page asks for one more.
    static constexpr int kMaxWindows = 10;

    static CWebHost& Instance();

    /// The client's first frame was painted. The engine may be loaded a second later.
    void FirstFramePainted();
    /// The engine may be loaded.
    void Begin();
    bool HasBegun() const { return m_bBegun; }

    /// Compares the user with the one of the last call. After a change all pages are closed and their data is deleted.
    void CheckUser();
    /// Changes with the user. A view of an older generation is not used any more.
    int Generation() const { return m_nGeneration; }

    /// Closes all pages. None opens before the next first frame.
    void End();
    bool HasEnded() const { return m_bEnded; }

    void CountWindow(int change) { m_nWindows += change; }
    int WindowCount() const { return m_nWindows; }

    /// The views that exist.
    void AddView(IWebView* view) { m_views.push_back(view); }
    void RemoveView(IWebView* view) { m_views.removeOne(view); }
    /// Process ids of the pages, each once.
    QList<qint64> PageProcesses() const;
    int ViewCount() const { return m_views.size(); }

Q_SIGNALS:
    void Begun();
    /// Emitted later, never inside CheckUser.
    void UserChanged();
    void Ending();
    /// A page changed its state, or its bridge passed or refused a message.
    void Traced(const WebTrace& trace);

private:
    CWebHost();

    QTimer m_afterFirstFrame;
    QList<IWebView*> m_views;
    quint64 m_nUser = 0;
    int m_nGeneration = 0;
    int m_nWindows = 0;
    bool m_bBegun = false;
    bool m_bEnded = false;
};

}  // namespace host::web
