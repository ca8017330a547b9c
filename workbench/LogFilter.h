#pragma once

#include "workbench/LogModel.h"

/// Filters the lines of the log view. Main thread.
class CLogFilter : public CEntryFilter {
public:
    enum class EnSource { All, Host, Module };

    explicit CLogFilter(CLogModel& model, QObject* parent = nullptr);

    void SetMinimum(ZRLogType severity);
    void SetSource(EnSource source);
    /// Shows only lines of this area of a module. An empty text shows all.
    void SetArea(const QString& area);

protected:
    bool IsChosen(int row) const override;

private:
    CLogModel& m_model;
    QString m_strArea;
    ZRLogType m_minimum = ZRLogType(0);
    EnSource m_source = EnSource::All;
};
