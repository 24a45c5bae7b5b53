#ifndef ZYL2_LOG_STANDARDERRORLOG_H
#define ZYL2_LOG_STANDARDERRORLOG_H

#include <Zyl2/Export.h>
#include <Zyl2/Log/Logging.h>

#include <ostream>

namespace Zyl2 {
namespace Log {

/// Prints records to the standard error stream, a line for each: "moxwriter: warning: ...". May be
/// called by several threads at once.
///
/// \code
/// Zyl2::Log::StandardErrorLog warnings;
/// Zyl2::Log::LogSystem* previous = Zyl2::Log::setActiveLogSystem(&warnings);
/// // ... write models ...
/// Zyl2::Log::setActiveLogSystem(previous);
/// \endcode
class ZYL2_EXPORT StandardErrorLog : public LogSystem
{
public:
    /// \param least records that matter less are not printed; without it what the library tells of
    ///              its work is not, only what of the host's does not get into the file
    explicit StandardErrorLog(Severity::Severity least = Severity::Warning);
    ~StandardErrorLog() override;

    /// Prints what the library hands over, which is always a record.
    /// \param text gone after the call
    void operator+=(std::ostream const& text) override;

    /// Prints a record.
    /// \param record gone after the call
    void operator+=(Record<char> const& record) override;

private:
    Severity::Severity least_;
};

} // namespace Log
} // namespace Zyl2

#endif
