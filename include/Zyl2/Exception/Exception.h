#ifndef ZYL2_EXCEPTION_EXCEPTION_H
#define ZYL2_EXCEPTION_EXCEPTION_H

#include <Zyl2/Export.h>

#include <boost/exception/exception.hpp>

#include <exception>
#include <string>

namespace Zyl2 {

/// Every failure of the library is one of the kinds below.
///
/// A host catches a kind, or `Exception` (or `std::exception`, or `boost::exception`) for all of
/// them. Where an exception arose can be asked for with Boost's error information:
/// `boost::get_error_info<boost::throw_function>(e)`, likewise `boost::throw_file` and
/// `boost::throw_line`. What exactly was wrong is told by `detail(e)`.
namespace Exception {

/// Root interface of the family.
class ZYL2_EXPORT Base
{
public:
    virtual ~Base() noexcept;

    /// Text of the failure; a null pointer here, never null in the kinds that are thrown.
    virtual char const* what() const noexcept;

    /// Number of the failure's kind; 1 unless a kind says otherwise.
    virtual int errorCode() const noexcept;
};

/// Common base of all kinds: carries the message.
class ZYL2_EXPORT Exception : public virtual Base,
                              public virtual std::exception,
                              public virtual boost::exception
{
public:
    /// An exception without a message of its own: `what()` gives the kind's default text.
    Exception();

    /// An exception that says `message`, used exactly as given.
    /// \param message terminated text, copied; must not be null.
    explicit Exception(char const* message);

    /// The message, or `defaultMessage()` when there is none.
    char const* what() const noexcept override;

    /// The kind's fixed text; "Unknown Exception" here.
    virtual char const* defaultMessage() const noexcept;

private:
    std::string message_;
};

/// Error code 2, "Miscelleneous exception": a file that cannot be opened, a stream in use, a write
/// into a block that is frozen.
class ZYL2_EXPORT MiscelleneousException : public Exception
{
public:
    MiscelleneousException();
    explicit MiscelleneousException(char const* message);
    int errorCode() const noexcept override;
    char const* defaultMessage() const noexcept override;
};

/// Error code 3, "Invalid arguments": a value that the call can't use.
class ZYL2_EXPORT InvalidArguments : public Exception
{
public:
    InvalidArguments();
    explicit InvalidArguments(char const* message);
    int errorCode() const noexcept override;
    char const* defaultMessage() const noexcept override;
};

/// Error code 5, "File open exception": the target exists and overwriting was not asked for.
class ZYL2_EXPORT FileOpenException : public Exception
{
public:
    FileOpenException();
    explicit FileOpenException(char const* message);
    int errorCode() const noexcept override;
    char const* defaultMessage() const noexcept override;
};

/// Error code 7, "File write exception": bytes did not reach the file, for instance on a full disk.
class ZYL2_EXPORT FileWriteException : public Exception
{
public:
    FileWriteException();
    explicit FileWriteException(char const* message);
    int errorCode() const noexcept override;
    char const* defaultMessage() const noexcept override;
};

/// Error code 11, "Out of bounds error": a node id or a position past the end.
class ZYL2_EXPORT OutOfBounds : public Exception
{
public:
    OutOfBounds();
    explicit OutOfBounds(char const* message);
    int errorCode() const noexcept override;
    char const* defaultMessage() const noexcept override;
};

/// Error code 12, "Overflow error": more rows, ids or bytes than the format can count.
class ZYL2_EXPORT OverflowError : public Exception
{
public:
    OverflowError();
    explicit OverflowError(char const* message);
    int errorCode() const noexcept override;
    char const* defaultMessage() const noexcept override;
};

/// Error code 13, "Underflow error": a negative count.
class ZYL2_EXPORT UnderflowError : public Exception
{
public:
    UnderflowError();
    explicit UnderflowError(char const* message);
    int errorCode() const noexcept override;
    char const* defaultMessage() const noexcept override;
};

/// Error code 14, "Key not found": an id that no node has.
class ZYL2_EXPORT KeyNotFound : public Exception
{
public:
    KeyNotFound();
    explicit KeyNotFound(char const* message);
    int errorCode() const noexcept override;
    char const* defaultMessage() const noexcept override;
};

/// Error code 16, "Memory allocation error": a block or a compression buffer can't be had.
class ZYL2_EXPORT MemoryAllocationException : public Exception
{
public:
    MemoryAllocationException();
    explicit MemoryAllocationException(char const* message);
    int errorCode() const noexcept override;
    char const* defaultMessage() const noexcept override;
};

/// Error code 17, "Invalid object state": a call out of order, such as adding before saving.
class ZYL2_EXPORT InvalidObjectState : public Exception
{
public:
    InvalidObjectState();
    explicit InvalidObjectState(char const* message);
    int errorCode() const noexcept override;
    char const* defaultMessage() const noexcept override;
};

/// Error code 19, "Template specialization not defined": a property value of another type than the
/// property expects.
class ZYL2_EXPORT TemplateSpecializationNotDefined : public Exception
{
public:
    TemplateSpecializationNotDefined();
    explicit TemplateSpecializationNotDefined(char const* message);
    int errorCode() const noexcept override;
    char const* defaultMessage() const noexcept override;
};

/// Error code 20, "Not yet implemented": a second root, or a block that would be saved out of
/// order.
class ZYL2_EXPORT NotYetImplemented : public Exception
{
public:
    NotYetImplemented();
    explicit NotYetImplemented(char const* message);
    int errorCode() const noexcept override;
    char const* defaultMessage() const noexcept override;
};

struct ZYL2_EXPORT DetailTag
{};

/// What exactly was wrong, beside the text of the failure, which is the same for all of its kind:
/// `boost::get_error_info<Zyl2::Exception::Detail>(e)`.
using Detail = boost::error_info<DetailTag, std::string>;

/// What exactly was wrong, such as "Displacement needs 3 columns, the array has 2".
/// \param failure any exception
/// \return one line of text, which lives as long as `failure` or a copy of it; empty, and never
///         null, where there is no more to say than `what()` does
ZYL2_EXPORT char const* detail(std::exception const& failure) noexcept;

} // namespace Exception
} // namespace Zyl2

#endif
