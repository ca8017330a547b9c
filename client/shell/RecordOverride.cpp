#include "RecordOverride.h"

#include "GrowthService.h"

namespace {

// A value that is no longer the written one was received from the server meanwhile.
template <class Value>
void Recover(Value& value, const Value& written, const Value& server) {
    if (value == written) {
        value = server;
    }
}

bool HaveSameValues(const CPremiumUIAccessData& left, const CPremiumUIAccessData& right) {
    return left.nActivationType == right.nActivationType && left.nDaysLeft == right.nDaysLeft &&
           left.strUIType == right.strUIType;
}

}  // namespace

void CRecordOverride::Set(const Values& values) {
    m_values = values;
    Apply();
}

void CRecordOverride::Apply() {
    const auto service = GrowthService();
    if (!service) {
        return;
    }
    QMap<EnPremiumAccess, Change> changes;
    const QMap<EnPremiumAccess, CPremiumUIAccessData> table = service->GetUIAccessData();
    for (auto entry = table.begin(); entry != table.end(); ++entry) {
        Change change{entry.value(), entry.value()};
        const auto former = m_changes.constFind(entry.key());
        if (former != m_changes.constEnd()) {
            Recover(change.server.nActivationType, former->written.nActivationType, former->server.nActivationType);
            Recover(change.server.nDaysLeft, former->written.nDaysLeft, former->server.nDaysLeft);
            Recover(change.server.strUIType, former->written.strUIType, former->server.strUIType);
        }
        change.written = change.server;
        change.written.nActivationType = m_values.activationType.value_or(change.server.nActivationType);
        change.written.nDaysLeft = m_values.daysLeft.value_or(change.server.nDaysLeft);
        change.written.strUIType = m_values.uiType.value_or(change.server.strUIType);
        if (!HaveSameValues(change.written, entry.value())) {
            service->SetUIAccessData(entry.key(), change.written);
        }
        changes[entry.key()] = change;
    }
    m_changes = changes;
}
