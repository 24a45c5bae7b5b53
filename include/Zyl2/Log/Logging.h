#ifndef ZYL2_LOG_LOGGING_H
#define ZYL2_LOG_LOGGING_H

#include <Zyl2/Export.h>

#include <ctime>
#include <ostream>
#include <sstream>

namespace Zyl2 {

/// The library narrates its saving work here. Nothing is printed unless a host installs a log
/// system of its own:
///
/// \code
/// struct Printer : Zyl2::Log::LogSystem
/// {
///     void operator+=(std::ostream const& text) override
///     {
///         auto const* record = dynamic_cast<Zyl2::Log::Record<char> const*>(&text);
///         if (record != nullptr)
///             std::cerr << record->file << ':' << record->line << ' ' << record->str() << '\n';
///     }
///     using LogSystem::operator+=;
/// };
/// Printer printer;
/// Zyl2::Log::LogSystem* previous = Zyl2::Log::setActiveLogSystem(&printer);
/// // ... write models ...
/// Zyl2::Log::setActiveLogSystem(previous);
/// \endcode
///
/// There is one active log system for the whole process, and the thread that drives a model calls
/// it from within the model's calls. Where different models are driven by different threads, a log
/// system is called by several threads at the same time: it has to lock whatever the calls share.
/// Each call brings one whole record, and the records of one thread come in their order. The
/// library holds no lock meanwhile.
namespace Log {

namespace Severity {
/// How much a record matters. The library narrates its work as `Info`; what a host gave and what
/// does not get into the file as it was given is a `Warning`.
enum Severity : int
{
    Debug = 0,
    Info = 1,
    Warning = 2,
    Error = 3
};
} // namespace Severity

/// A text that knows where and when it was made; the text is streamed into it.
template <typename CharT>
class Record;

/// The records that the library makes.
template <>
class ZYL2_EXPORT Record<char> : public std::ostringstream
{
public:
    /// \param source    path of the source that speaks, such as "Zyl2/Wvf/Index"; not copied
    /// \param signature full signature of the function that speaks; not copied
    /// \param lineNumber line of the statement
    /// \param weight    how much the record matters
    Record(char const* source, char const* signature, unsigned long lineNumber,
           Severity::Severity weight);
    ~Record() override;
    Record(Record const&) = delete;
    Record& operator=(Record const&) = delete;

    /// How much the record matters.
    Severity::Severity severity;
    /// Path of the source that speaks, such as "Zyl2/Wvf/Index".
    char const* file;
    /// Full signature of the function that speaks.
    char const* function;
    /// Line of the statement.
    unsigned long line;
    /// Second of the record's making, whenever it is handed over.
    std::time_t time;
};

/// Takes the records. This one discards them; a host derives one that keeps them.
class ZYL2_EXPORT LogSystem
{
public:
    virtual ~LogSystem();

    /// Takes one finished record, maybe while other threads hand over theirs. The library always
    /// calls this form; the receiver recovers the `Record<char>` with `dynamic_cast`.
    /// \param text the record; gone after the call
    virtual void operator+=(std::ostream const& text);

    /// The form for callers that have the record at hand.
    /// \param record gone after the call
    virtual void operator+=(Record<char> const& record);
};

/// The log system that records go to: first the silent one, or with MOXWRITER_WARNINGS=1 in the
/// environment one that prints warnings to `stderr`.
/// \return the active one
ZYL2_EXPORT LogSystem& activeLogSystem();

/// Sends all further records of this process to `logSystem`. A record that another thread is just
/// handing over still goes to the one that was active before.
/// \param logSystem not owned, must live until another one is set and no thread is in a call of it
///                  any more, say because the threads that drive models were joined; null restores
///                  the first one
/// \return the one that was active before; never null
ZYL2_EXPORT LogSystem* setActiveLogSystem(LogSystem* logSystem);

} // namespace Log
} // namespace Zyl2

#endif
