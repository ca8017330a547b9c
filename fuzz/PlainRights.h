#pragma once

#include <QMap>
#include <map>
#include <string>

#include "modules/ZRPremiumRecords.h"
#include "premium_svr.pb.h"

/// Rights by number, one text each, to compare the module's table with the decoded answer.
using PlainRights = std::map<int, std::string>;

/// The expected contents of an empty table after an answer with these elements.
PlainRights ExpectedRights(const google::protobuf::RepeatedPtrField<web_premium_access::UiDataAndAccessData>& elements);

/// The rights of a table.
PlainRights ActualRights(const QMap<EnPremiumAccess, CPremiumUIAccessData>& table);
