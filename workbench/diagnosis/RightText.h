#pragma once

#include <QString>
#include <vector>

#include "modules/ZRPremiumRecords.h"
#include "workbench/FieldNode.h"

class CWireDecoder;

/// Describes rights and VIP status.
namespace right_text {

/// The schema's name of a right; empty if it has none.
QString Name(const CWireDecoder& decoder, int right);

QString YesNo(bool yes);

/// "full", or "3 · full". A number without a word is shown itself.
enum class EnForm { Word, NumberAndWord };

QString Activation(int type, EnForm form = EnForm::NumberAndWord);
QString Source(int source, EnForm form = EnForm::NumberAndWord);
QString OldState(int state);
QString NewState(int state);
QString Engine(ZRVipEngineStatus status);

/// All fields of both halves except the other info, with their names in the contract.
std::vector<FieldNode> Fields(const CPremiumUIAccessData& record);

/// Indents a JSON text. Returns any other text unchanged.
QString Pretty(const QString& otherInfo);

}  // namespace right_text
