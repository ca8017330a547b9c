#pragma once

#include "framework/export.h"
#include "plugin/IZRPluginInterface.h"

/// What other modules may ask the trade module, under the interface name "16ITradeModuleUtil". Main thread.
/// A client without trading has no such service.
class ZRHOST_API ITradeModuleUtil : public IZRPluginInterface {
public:
    ~ITradeModuleUtil() override;

    /// The trade module's answer, at this moment, to the yes-or-no question with that number. What a number
    /// asks is agreed between the trade module and who asks; false for one that it doesn't know.
    virtual bool QueryTradeStatus(int query) = 0;
};
