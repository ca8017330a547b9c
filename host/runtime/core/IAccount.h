#pragma once

#include <cstdint>
#include <vector>

/// Behind core::login_status_data and core::attr_market. Main thread.
class IAccount {
public:
    virtual ~IAccount() = default;
    virtual uint64_t UserId() const = 0;
    virtual uint64_t SessionId() const = 0;
    virtual std::vector<int> AttributedMarkets() const = 0;
};
