#ifndef ZYL2_LOG_LOGGERBASE_H
#define ZYL2_LOG_LOGGERBASE_H

#include <Zyl2/Export.h>
#include <Zyl2/Log/Logging.h>

#include <ostream>

namespace Zyl2 {
namespace Log {

/// Base for loggers of a host. This one ignores everything; copying and assigning copy nothing.
class ZYL2_EXPORT LoggerBase
{
public:
    LoggerBase();
    LoggerBase(LoggerBase const& other);
    LoggerBase& operator=(LoggerBase const& other);
    virtual ~LoggerBase();

    /// Starts a record made at the given place.
    /// \param file     path of the source that speaks
    /// \param function full signature of the function that speaks
    /// \param line     line of the statement
    /// \param severity how much the record matters
    /// \return the logger itself
    virtual LoggerBase& logRecord(char const* file, char const* function, unsigned long line,
                                  Severity::Severity severity);

    /// Takes a piece of text.
    /// \param text gone after the call
    virtual void operator+=(std::ostream const& text);
};

} // namespace Log
} // namespace Zyl2

#endif
