#pragma once

#include <QStringList>
#include <memory>
#include <vector>

#include "tracing/TraceEvent.h"
#include "workbench/FieldNode.h"

class CWireDecoder;

/// Formats one kind of trace event as a row and as a detail tree. Main thread.
class ITraceFormat {
public:
    virtual ~ITraceFormat() = default;

    /// Maximum number of rows; smaller for formats with large rows.
    virtual int MostRows() const { return 10'000; }
    /// Used in object names, such as "Traffic".
    virtual QString Name() const = 0;
    virtual std::vector<QString> Titles() const = 0;
    virtual std::vector<int> Widths() const = 0;
    /// The kinds by which the rows can be filtered. Kind returns an index into them.
    virtual std::vector<QString> Kinds() const = 0;

    virtual bool Takes(const TraceEvent& seen) const = 0;
    /// Returns an id that the start and the end of an exchange share. Both are one row, which shows the end when it has
    /// arrived. Returns nothing for a single event.
    virtual std::optional<uint64_t> Exchange(const TraceEvent& /*seen*/) const { return std::nullopt; }
    virtual bool IsEnd(const TraceEvent& /*seen*/) const { return false; }
    virtual int Kind(const TraceEvent& seen) const = 0;
    virtual bool IsBad(const TraceEvent& seen) const = 0;
    /// One cell for each title except the first, which is the time.
    virtual QStringList Cells(const TraceEvent& seen) const = 0;
    virtual std::vector<FieldNode> Detail(const TraceEvent& seen) const = 0;
};

std::unique_ptr<ITraceFormat> NewTrafficFormat(const CWireDecoder& decoder);
std::unique_ptr<ITraceFormat> NewStoreFormat();
std::unique_ptr<ITraceFormat> NewUrlFormat();
/// Start and end of a call share a row.
std::unique_ptr<ITraceFormat> NewHttpFormat();
std::unique_ptr<ITraceFormat> NewReportFormat();
