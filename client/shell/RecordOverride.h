#pragma once

#include <QMap>
#include <QString>
#include <optional>

#include "modules/ZRPremiumRecords.h"

/// Replaces values in the records of all rights that the user has at the growth module. The module sends no message
/// about it. Main thread.
class CRecordOverride {
public:
    /// Without a value, the server's is kept.
    struct Values {
        std::optional<int> activationType;
        std::optional<int> daysLeft;
        std::optional<QString> uiType;
    };

    CRecordOverride() = default;
    ~CRecordOverride() { Set({}); }
    Q_DISABLE_COPY(CRecordOverride)

    /// Replaces the former values. None restores the server's.
    void Set(const Values& values);
    /// Must be called when the server can have replaced records.
    void Apply();

private:
    struct Change {
        CPremiumUIAccessData server;
        CPremiumUIAccessData written;
    };

    Values m_values;
    QMap<EnPremiumAccess, Change> m_changes;
};
