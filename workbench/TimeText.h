#pragma once

#include <QString>

/// Times as the workbench displays them: in the time zone of this computer, which headers name.
namespace time_text {

/// The zone's name, such as "UTC".
QString Zone();

/// Time of day with milliseconds. The date precedes it on any day but today.
QString Local(qint64 timeMs);

/// Difference of the server's clock in its two largest units, such as "+1 h 3 s"; empty if it is less than two seconds.
QString ServerOffset();

}  // namespace time_text
