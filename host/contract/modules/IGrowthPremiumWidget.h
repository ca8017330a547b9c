#pragma once

#include <QString>
#include <QWidget>
#include <functional>

#include "framework/export.h"

/// A strip of one line for a right of limited time: tag, title, days left and a button. It shows the caller's texts and
/// does not follow the user's rights.
/// Thread: main thread.
/// Ownership: the parent owns the strip; the growth module keeps no pointer to it.
class ZRHOST_API IGrowthPremiumWidget : public QWidget {
    Q_OBJECT

public:
    explicit IGrowthPremiumWidget(QWidget* parent = nullptr);
    ~IGrowthPremiumWidget() override;

    /// Sets the function for a click on the button, with the checked state of the button. It may delete the strip.
    /// `context` guards both functions of the strip and replaces an earlier one: without it, none is called.
    virtual void SetCallback(std::function<void(bool checked)> callback, QObject* context) = 0;

    /// Sets the function for each show, with false, and each hide, with true, also when the window is minimised or
    /// restored. It runs inside that event, so it deletes the strip with deleteLater() only. `context` as above.
    virtual void SetShowCallback(std::function<void(bool hidden)> callback, QObject* context) = 0;

    /// Shows these values. An empty title or button text hides its part, 0 days hide number and unit, and an empty
    /// `uiType` or "A" hides the tag. `detailTitle` has no effect.
    virtual void UpdateUiData(const QString& mainTitle, const QString& mainBtn, const QString& uiType,
                              const QString& detailTitle, int daysLeft) = 0;
};
