#pragma once

#include <QStringList>
#include <memory>
#include <vector>

#include "tracing/TraceEvent.h"
#include "workbench/FieldNode.h"

class CWireDecoder;

/// How one kind of what was seen is shown: as a row of a table, and in full. Main thread.
class ISeenFormat {
public:
    virtual ~ISeenFormat() = default;

    /// How many rows are kept; fewer where a row can be large.
    virtual int MostRows() const { return 10'000; }
    /// In object names, as "Traffic".
    virtual QString Name() const = 0;
    virtual std::vector<QString> Titles() const = 0;
    virtual std::vector<int> Widths() const = 0;
    /// What the rows are told apart by; Kind gives an index into it.
    virtual std::vector<QString> Kinds() const = 0;

    virtual bool Takes(const TraceEvent& seen) const = 0;
    /// What a beginning and its end share: they are one row, which shows the end once that is there. Nothing for
    /// what stands alone.
    virtual std::optional<uint64_t> Exchange(const TraceEvent& /*seen*/) const { return std::nullopt; }
    virtual bool IsEnd(const TraceEvent& /*seen*/) const { return false; }
    virtual int Kind(const TraceEvent& seen) const = 0;
    virtual bool IsBad(const TraceEvent& seen) const = 0;
    /// One cell for each title after the first, which is the time.
    virtual QStringList Cells(const TraceEvent& seen) const = 0;
    virtual std::vector<FieldNode> Detail(const TraceEvent& seen) const = 0;
};

std::unique_ptr<ISeenFormat> NewTrafficFormat(const CWireDecoder& decoder);
std::unique_ptr<ISeenFormat> NewStoreFormat();
std::unique_ptr<ISeenFormat> NewUrlFormat();
/// A row is a call with its answer.
std::unique_ptr<ISeenFormat> NewHttpFormat();
std::unique_ptr<ISeenFormat> NewReportFormat();
