#pragma once

#include "workbench/LogModel.h"

/// The lines that the log view is asked to show. Main thread.
class CLogFilter : public CEntryFilter {
public:
    enum class EnSource { All, Host, Module };

    explicit CLogFilter(CLogModel& model, QObject* parent = nullptr);

    void SetMinimum(ZRLogType severity);
    void SetSource(EnSource source);
    /// The part of a module that wrote it; empty for all.
    void SetArea(const QString& area);

protected:
    bool IsChosen(int row) const override;

private:
    CLogModel& m_model;
    QString m_strArea;
    ZRLogType m_minimum = ZRLogType(0);
    EnSource m_source = EnSource::All;
};
