#pragma once

#include <QHash>
#include <QJsonObject>
#include <QPointer>
#include <QTimer>
#include <QWidget>

#include "ISessionControl.h"
#include "workbench/ControlClient.h"
#include "workbench/diagnosis/Explanation.h"

class CWireDecoder;
class QComboBox;
class QHBoxLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QSortFilterProxyModel;
class QStandardItem;
class QStandardItemModel;
class QTableView;
class QTreeWidget;
class ZRWebImageWidget;

/// The page that answers why something is not shown: a list of all ad positions, rights, chat scenes and chat opens,
/// and the explanation of the chosen one. All arguments must outlive it.
class CWhyPage : public QWidget {
    Q_OBJECT

public:
    CWhyPage(const CTracker& tracker, CPremiumRights& rights, const CAIChatEntries& entries,
             const CWireDecoder& decoder, IControlClient& server, QWidget* parent = nullptr);

    /// The explanations of all subjects, with fixed English keys.
    QJsonObject State() const;

    /// The users' names for the list.
    void ShowUsers(const std::vector<ServerUser>& users);

    /// Must be called for a new or restarted server. Asks it for the scenario's ad positions.
    void ForgetServer();

protected:
    void showEvent(QShowEvent* event) override;

private:
    enum class EnKind { Ad, Refresh, Vip, Scene, Open, Right };
    struct Subject {
        QString key;
        EnKind kind = EnKind::Ad;
        int number = 0;  // a right, a scene or the index of an open; orders the list
        QString name;
        QString title;
        AdSlot slot;  // of an ad
    };

    QWidget* NewList();
    QWidget* NewAnswer();
    QPushButton* NewButton(const char* name, const QString& text, void (CWhyPage::*clicked)());
    std::vector<Subject> Subjects() const;
    std::set<int> ListedRights() const;
    Explanation Explain(const Subject& subject) const;
    static bool CanAsk(const Subject& subject);
    QString UserText() const;
    const Subject* Chosen() const;
    void UpdateLater();
    void Update();
    void ShowRow(const Subject& subject);
    void ShowAnswer();
    void ShowSentence();
    void ShowStrip(const std::vector<StripStep>& strip);
    void AskPositions();
    void OnPositions(const ServerAnswer& answer);
    void AskNow();
    void ForgetAndAsk();
    void CopyAnswer();
    void Push(const char* json);
    void ShowBanner(QWidget* banner);
    void Say(const QString& words, bool good);

    const CTracker& m_tracker;
    CPremiumRights& m_rights;
    const CAIChatEntries& m_entries;
    const CWireDecoder& m_decoder;
    IControlClient& m_server;
    std::set<AdSlot> m_positions;  // of the scenario
    std::map<quint64, QString> m_users;
    std::vector<std::pair<int, QString>> m_rightNames;  // of all rights of the schema
    std::map<QString, Subject> m_subjects;
    QHash<QString, QStandardItem*> m_rows;
    std::vector<Detail> m_details;  // in the tree
    QStandardItemModel* m_pModel;
    QSortFilterProxyModel* m_pFilter;
    QTableView* m_pTable;
    QLineEdit* m_pSearch;
    QComboBox* m_pKind;
    QLabel* m_pNothing;
    QLabel* m_pClock;
    QLabel* m_pSentence;
    QLabel* m_pMessage;
    QHBoxLayout* m_pStrip = nullptr;
    QTreeWidget* m_pDetail;
    ZRWebImageWidget* m_pPicture;
    QString m_strPicture;  // URL
    QPushButton* m_pAsk;
    QPushButton* m_pForget;
    QPointer<QWidget> m_pBanner;  // that was asked for here
    QTimer m_batch;
    QTimer m_tick;
};
