#pragma once

#include <QWidget>
#include <memory>

#include "core/message_dispatch.h"
#include "framework/CSafeFunction.h"

class ZSvgWidget;

/// The mark of a member in the title bar, hidden for others. Main thread.
class CZRVipTitleBarEntryWidget : public QWidget {
    Q_OBJECT

public:
    /// `fnChanged` is called after each message about the status, also if nothing changed.
    CZRVipTitleBarEntryWidget(QWidget* parent, const CSafeFunction<void()>& fnChanged);
    ~CZRVipTitleBarEntryWidget() override;

    void RefreshState();
    void OnStateChanged(unsigned int messageId, unsigned long param, std::shared_ptr<core::CMessageBody> body);

private:
    ZSvgWidget* m_pSvgWidget;
    CSafeFunction<void()> m_fnChanged;
};
