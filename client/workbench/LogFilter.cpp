#include "workbench/LogFilter.h"

#include "workbench/LogModel.h"

CLogFilter::CLogFilter(CLogModel& model, QObject* parent) : QSortFilterProxyModel(parent), m_model(model) {
    setSourceModel(&model);
}

void CLogFilter::SetText(const QString& text) {
    m_strText = text;
    invalidateFilter();
}

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

bool CLogFilter::filterAcceptsRow(int row, const QModelIndex& /*parent*/) const {
    if (m_model.SeverityAt(row) < m_minimum) {
        return false;
    }
    if (m_source != EnSource::All && m_model.IsHostAt(row) != (m_source == EnSource::Host)) {
        return false;
    }
    if (!m_strArea.isEmpty() && m_model.AreaAt(row) != m_strArea) {
        return false;
    }
    return m_strText.isEmpty() || m_model.TextAt(row).contains(m_strText, Qt::CaseInsensitive) ||
           m_model.ReadableAt(row).contains(m_strText, Qt::CaseInsensitive) ||
           m_model.TagAt(row).contains(m_strText, Qt::CaseInsensitive);
}
