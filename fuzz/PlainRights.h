#pragma once

#include <QMap>
#include <map>
#include <string>

#include "modules/ZRPremiumRecords.h"
#include "premium_svr.pb.h"

/// Rights as plainly as can be, one text each, by number: to compare what the module holds with what it was told.
using PlainRights = std::map<int, std::string>;

/// What elements of an answer should leave behind in an empty table.
PlainRights Told(const google::protobuf::RepeatedPtrField<web_premium_access::UiDataAndAccessData>& elements);

/// What a table holds.
PlainRights Held(const QMap<EnPremiumAccess, CPremiumUIAccessData>& table);
