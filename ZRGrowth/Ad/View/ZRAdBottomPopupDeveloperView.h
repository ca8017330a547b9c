#pragma once

#include <QString>
#include <QWidget>
#include <functional>

class CZRAdModelList;
class ZText;

/// A panel for the client's developer tools: last display of the bottom popup, waiting ads, and a sample that needs no
/// server. Both texts are read at construction, then only by UpdateTexts() and the buttons. Main thread.
class CZRAdBottomPopupDeveloperView : public QWidget {
    Q_OBJECT

public:
    /// A parent that is no widget is ignored.
    explicit CZRAdBottomPopupDeveloperView(QObject* parent);
    ~CZRAdBottomPopupDeveloperView() override;

    /// Sets the receiver of a list, which takes ownership.
    void SetSetModelCallback(std::function<void(CZRAdModelList*)> callback);
    /// Sets the source of the displayed list. It keeps ownership and may return null.
    void SetGetModelCallback(std::function<CZRAdModelList*()> callback);

    QString GetAdLastShowTimeStampKey(int adType, int adPosition, int showIntervalType);
    void ClearAdBottomPopupLastShowTimestamp();
    QString GetAdBottomPopupLastShowTimeStamp();
    void UpdateLastShowTimestampText();
    /// Updates both texts, as the button does.
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
