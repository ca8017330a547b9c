#include "workbench/LogFilter.h"

CLogFilter::CLogFilter(CLogModel& model, QObject* parent) : CEntryFilter(model, parent), m_model(model) {}

void CLogFilter::SetMinimum(ZRLogType severity) {
    m_minimum = severity;
    invalidateFilter();
}

void CLogFilter::SetSource(EnSource source) {
    m_source = source;
    invalidateFilter();
}

void CLogFilter::SetArea(const QString& area) {
    m_strArea = area;
    invalidateFilter();
}

bool CLogFilter::IsChosen(int row) const {
    const bool ofSource = m_source == EnSource::All || m_model.IsHostAt(row) == (m_source == EnSource::Host);
    const bool ofArea = m_strArea.isEmpty() || m_model.AreaAt(row) == m_strArea;
    return ofSource && ofArea && m_model.At(row).severity >= m_minimum;
}
