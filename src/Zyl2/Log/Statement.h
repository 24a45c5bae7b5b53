#ifndef ZYL2_LOG_STATEMENT_H
#define ZYL2_LOG_STATEMENT_H

#include <Zyl2/Log/Logging.h>

#include <boost/current_function.hpp>

namespace Zyl2 {
namespace Log {

/// Whether a host listens: most don't, and a statement costs as much as writing a small dataset.
bool hasLogSystem();

/// One log statement: joins `pieces` and hands the record to the active log system.
///
/// A piece of type `unsigned char` must be cast by the caller, or it is printed as a character.
template <typename... Pieces>
void write(Severity::Severity severity, char const* source, char const* signature,
           unsigned long line, Pieces const&... pieces)
{
    if (!hasLogSystem())
        return;
    Record<char> record(source, signature, line, severity);
    (record << ... << pieces);
    // Handed over as a plain stream, from which receivers recover the record.
    activeLogSystem() += static_cast<std::ostream const&>(record);
}

/// A statement that narrates the work.
template <typename... Pieces>
void write(char const* source, char const* signature, unsigned long line, Pieces const&... pieces)
{
    write(Severity::Info, source, signature, line, pieces...);
}

/// A statement that something of the host's does not get into the file as it was given.
template <typename... Pieces>
void warn(char const* source, char const* signature, unsigned long line, Pieces const&... pieces)
{
    write(Severity::Warning, source, signature, line, pieces...);
}

} // namespace Log
} // namespace Zyl2

#endif
