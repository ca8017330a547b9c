#pragma once

#include <QString>
#include <QWidget>
#include <functional>

class CZRAdModelList;
class ZText;

/// A panel for the client's developer tools: when the bottom popup was last shown, which ads wait, and a sample to
/// try without a server. Both texts are read at construction, then only by UpdateTexts() and the buttons. Main thread.
class CZRAdBottomPopupDeveloperView : public QWidget {
    Q_OBJECT

public:
    /// A parent that is no widget is passed over.
    explicit CZRAdBottomPopupDeveloperView(QObject* parent);
    ~CZRAdBottomPopupDeveloperView() override;

    /// Who takes a list; it is given away.
    void SetSetModelCallback(std::function<void(CZRAdModelList*)> callback);
    /// Whose list is shown; it may give null, and keeps what it gives.
    void SetGetModelCallback(std::function<CZRAdModelList*()> callback);

    QString GetAdLastShowTimeStampKey(int adType, int adPosition, int showIntervalType);
    void ClearAdBottomPopupLastShowTimestamp();
    QString GetAdBottomPopupLastShowTimeStamp();
    void UpdateLastShowTimestampText();
    /// Reads both texts anew, as the button does.
    void UpdateTexts();

protected Q_SLOTS:
    void OnClearLastShowTimestamp();
    void OnUpdateText();
    void OnUpdateCacheDataText();
    void OnGenerateCacheData();

private:
    void InitUI();

    ZText* m_pLastShowText = nullptr;
    ZText* m_pCacheDataText = nullptr;
    std::function<void(CZRAdModelList*)> m_fnSetModel;
    std::function<CZRAdModelList*()> m_fnGetModel;
};
