#pragma once

#include <QColor>
#include <QString>
#include <memory>

#include "AIChat/Controller/ZRAIChatIds.h"
#include "ui/ZStdTitleBar.h"

class ZIconButton;
class ZLabel;
class ZText;

/// The title bar of the chat window: a pin, and the title or the network status in its place. Main thread.
class CZRAIChatWebTitleBar : public ZStdTitleBar {
    Q_OBJECT

public:
    explicit CZRAIChatWebTitleBar(QWidget* parent = nullptr);
    ~CZRAIChatWebTitleBar() override;

    bool eventFilter(QObject* watched, QEvent* event) override;
    bool isDraggable(QWidget* widget) override;
    void initUi() override;

    /// Has no effect: the bar has no button for a new session. The page may call it nevertheless.
    void SetNewSessionEnable(bool enable);
    /// Shows the status with `desc` in place of the title, with `tips` as its tooltip. A good status or an empty `desc`
    /// shows the title.
    void SetDescAndTips(ZRAIChatWebNetWorkStatus status, const QString& desc, const QString& tips);
    /// Unpins the window and shows the title.
    void Clear();

Q_SIGNALS:
    void NewSessionBtnClicked();
    void PinBtnClicked(bool isChecked);
    void CloseButtonClicked();

protected:
    QWidget* createCustomWidget() override;

private Q_SLOTS:
    void OnPinBtnClicked();

private:
    void PaintStatusDot();

    ZIconButton* m_pNewSessionButton = nullptr;  // never created
    ZIconButton* m_pPinButton = nullptr;
    ZText* m_pTitleText = nullptr;
    ZLabel* m_pStatusLabel = nullptr;
    std::shared_ptr<const QColor> m_pStatusDotColor;  // resolved at the next paint
    QString m_strStatusDotColorName;
};
