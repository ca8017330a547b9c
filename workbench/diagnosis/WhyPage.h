#pragma once

#include <QJsonObject>
#include <QPointer>
#include <QTimer>
#include <QWidget>

#include "workbench/ControlClient.h"
#include "workbench/Widgets.h"
#include "workbench/diagnosis/Explanation.h"

class QLineEdit;
class QPlainTextEdit;
class QSortFilterProxyModel;
class QStandardItem;
class QStandardItemModel;
class QTableView;
class ZRWebImageWidget;

/// The page that answers why something is not shown: a list of all ad positions, rights, chat scenes and chat opens,
/// and the explanation of the chosen one. All arguments must outlive it.
class CWhyPage : public QWidget {
    Q_OBJECT

public:
    CWhyPage(const CTracker& tracker, CPremiumRights& rights, const CAIChatEntries& entries, IControlClient& server,
             QWidget* parent = nullptr);

    /// Computes the explanations of all subjects, with fixed English keys.
    QJsonObject State();
    /// The users' names for the list.
    void ShowUsers(const std::vector<ServerUser>& users);
    /// Must be called for a new or restarted server. Asks it for the scenario's ad positions.
    void ForgetServer();

protected:
    void showEvent(QShowEvent* event) override;

private:
    struct Subject {
        QString name;  // unique
        QString title;
        Explanation answer;
        std::function<void()> ask = {};  // empty: the module asks at a login only
    };

    void SetUpList();
    QVector<Subject> Subjects();
    std::set<int> ListedRights() const;
    QString RightName(int right) const;
    QString UserText() const;
    Subject Chosen() const;
    void UpdateLater();
    void Update();
    void ShowRow(int index);
    void ShowAnswer();
    void ForgetAndAsk();
    void CopyAnswer();
    void Push(const char* json);
    void AskRights(const QVector<int>& rights);
    void AskBanner(int position);
    void ShowBanner(QWidget* banner);
    void Say(const QString& words, bool isGood = true);

    const CTracker& m_tracker;
    CPremiumRights& m_rights;
    const CAIChatEntries& m_entries;
    IControlClient& m_server;
    std::set<AdSlot> m_positions;  // of the scenario
    std::vector<ServerUser> m_users;
    QVector<Subject> m_subjects;  // in their order without a search
    std::map<QString, QStandardItem*> m_rows;
    QStandardItemModel* m_pModel;
    QSortFilterProxyModel* m_pFilter;
    QTableView* m_pTable;
    QLineEdit* m_pSearch;
    QLabel* m_pNote;
    QLabel* m_pStrip;
    QLabel* m_pSentence;
    QLabel* m_pMessage;
    QPlainTextEdit* m_pDetail;
    ZRWebImageWidget* m_pPicture;
    QString m_strPicture;  // URL
    QPushButton* m_pAsk;
    QPushButton* m_pForget;
    QPointer<QWidget> m_pBanner;  // that was asked for here
    QTimer m_batch;
};
