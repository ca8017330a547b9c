#pragma once

#include "framework/export.h"
#include "plugin/IZRPluginInterface.h"

/// Queries to the trade module, under the interface name "16ITradeModuleUtil".
/// Thread: main thread.
/// Failure: a client without trading has no such service.
class ZRHOST_API ITradeModuleUtil : public IZRPluginInterface {
public:
    ~ITradeModuleUtil() override;

    /// Returns the current answer to a yes-or-no query. The trade module and its callers agree on the numbers.
    /// Failure: false for an unknown number.
    virtual bool QueryTradeStatus(int query) = 0;
};
