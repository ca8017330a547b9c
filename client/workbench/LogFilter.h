#pragma once

#include <QSortFilterProxyModel>

#include "framework/log.h"

class CLogModel;

/// The lines that the log view is asked to show, out of a CLogModel. Main thread.
class CLogFilter : public QSortFilterProxyModel {
public:
    enum class EnSource { All, Host, Module };

    explicit CLogFilter(CLogModel& model, QObject* parent = nullptr);

    /// Lines whose text or tag holds it, whatever the case; empty for all.
    void SetText(const QString& text);
    void SetMinimum(ZRLogType severity);
    void SetSource(EnSource source);
    /// The part of a module that wrote it; empty for all.
    void SetArea(const QString& area);

protected:
    bool filterAcceptsRow(int row, const QModelIndex& parent) const override;

private:
    CLogModel& m_model;
    QString m_strText;
    QString m_strArea;
    ZRLogType m_minimum = ZRLogType(0);
    EnSource m_source = EnSource::All;
};
