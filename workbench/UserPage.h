#pragma once

#include <QJsonObject>
#include <QWidget>

#include "workbench/Widgets.h"

class CAIChatEntries;
class CPremiumRights;
class CTracker;
class QFormLayout;
class QLineEdit;
class QPlainTextEdit;

/// Controls the session, and shows everything about the logged-in user in one place. The arguments must outlive it.
class CUserPage : public QWidget {
    Q_OBJECT

public:
    CUserPage(ISessionControl& session, CAIChatEntries& entries, CPremiumRights& rights, const CTracker& tracker,
              QWidget* parent = nullptr);

    /// Shows these overrides as being in force, for example "focus never".
    void ShowOverrides(const QStringList& overrides);

    /// Shows the state of an export; an empty one shows the live state again.
    void ShowFile(const QJsonObject& state);

    /// The state of client and user, with fixed keys.
    QJsonObject State() const;

public Q_SLOTS:
    /// Reads everything again.
    void Refresh();

private:
    /// A line of the page, and a member of the state.
    struct Fact {
        QString key;
        QString label;
        std::function<QString()> read;
        QLabel* value;
    };

    QFormLayout* NewControls();
    QFormLayout* NewFacts();
    void AskMarkets();
    void ShowUser();
    void ShowChoices();
    void Copy() const;
    QString Rights() const;
    QString OldVip() const;
    QString NewVip() const;
    QString LastRefresh() const;
    QString Overrides() const;

    ISessionControl& m_session;
    CAIChatEntries& m_entries;
    CPremiumRights& m_rights;
    const CTracker& m_tracker;
    QStringList m_overrides;
    std::vector<Fact> m_facts;
    QJsonObject m_file;  // of the shown export; empty: live
    quint64 m_nCurrent = 0;
    bool m_bMarkets = false;  // overridden
    QComboBox* m_pUser;
    QPushButton* m_pLogin;
    QPushButton* m_pLogout;
    QComboBox* m_pLanguage;
    QComboBox* m_pTheme;
    QComboBox* m_pEdition;
    QComboBox* m_pOverride;
    QLineEdit* m_pMarkets;
    QPlainTextEdit* m_pFile;  // the whole state of the shown export
};
