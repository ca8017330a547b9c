#pragma once

#include <string>

/// Names a parameterized case after its row.
struct RowName {
    template <class Row>
    std::string operator()(const Row& row) const {
        return row.param.name;
    }
};
