#pragma once

#include <QString>

/// Times as the workbench displays them: in the time zone of this computer, which headers name.
namespace time_text {

/// The zone's name, such as "UTC".
QString Zone();

/// Time of day with milliseconds. The date precedes it on any day but today.
QString Local(qint64 timeMs);

/// Difference of the server's clock, such as "+1 h 0 min 3 s"; empty if it is less than two seconds.
QString ServerOffset();

/// The local time of a server time. It is marked with the server's time while the clocks differ.
QString OfServer(qint64 serverMs);

}  // namespace time_text
