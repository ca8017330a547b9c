#pragma once

#include <QString>
#include <vector>

#include "modules/ZRPremiumRecords.h"
#include "workbench/FieldNode.h"

class CWireDecoder;

/// Rights and VIP status in words.
namespace right_words {

/// As the schema names it; empty for a number that it has no name for.
QString Name(const CWireDecoder& decoder, int right);

QString YesNo(bool yes);

/// "full", or "3 · full". Where there is no word for a number it stands for itself.
enum class EnForm { Word, NumberAndWord };

QString Activation(int type, EnForm form = EnForm::NumberAndWord);
QString Source(int source, EnForm form = EnForm::NumberAndWord);
QString OldState(int state);
QString NewState(int state);
QString Engine(ZRVipEngineStatus status);

/// All fields of both halves, save the other info, by the names that the contract gives them.
std::vector<FieldNode> Fields(const CPremiumUIAccessData& record);

/// A JSON text in lines with indents; any other text as it is.
QString Pretty(const QString& otherInfo);

}  // namespace right_words
