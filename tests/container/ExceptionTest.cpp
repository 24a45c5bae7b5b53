#include "Zyl2/Exception/Raise.h"
#include "support/ThrowSite.h"

#include <boost/exception/diagnostic_information.hpp>

#include <gtest/gtest.h>

#include <exception>
#include <string>
#include <type_traits>

namespace {

using namespace Zyl2::Exception;

template <typename Kind>
void expectKind(int code, std::string const& text)
{
    EXPECT_EQ(Kind().errorCode(), code);
    EXPECT_EQ(std::string(Kind().what()), text);
    EXPECT_EQ(std::string(Kind().defaultMessage()), text);
    EXPECT_EQ(std::string(Kind("").what()), text);
    EXPECT_EQ(std::string(Kind("x").what()), "x");
    EXPECT_EQ(std::string(Kind("x").defaultMessage()), text);
    EXPECT_EQ(Kind("x").errorCode(), code);
    EXPECT_EQ(sizeof(Kind), sizeof(Zyl2::Exception::Exception)) << "a kind adds no data";

    Kind const original("the copy says this too");
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): the copy is what is tested
    Kind const copy(original);
    EXPECT_EQ(std::string(copy.what()), "the copy says this too");

    Support::expectThrown<Kind>(
        [] { raise(Kind("x"), "Zyl2/Some/Source", 41, "void Some::Function(int)"); },
        {code, "x", "void Some::Function(int)", "Zyl2/Some/Source", 41});
}

TEST(Exception, EveryKindHasItsCodeAndItsDefaultText)
{
    expectKind<MiscelleneousException>(2, "Miscelleneous exception");
    expectKind<InvalidArguments>(3, "Invalid arguments");
    expectKind<FileOpenException>(5, "File open exception");
    expectKind<FileWriteException>(7, "File write exception");
    expectKind<OutOfBounds>(11, "Out of bounds error");
    expectKind<OverflowError>(12, "Overflow error");
    expectKind<UnderflowError>(13, "Underflow error");
    expectKind<KeyNotFound>(14, "Key not found");
    expectKind<MemoryAllocationException>(16, "Memory allocation error");
    expectKind<InvalidObjectState>(17, "Invalid object state");
    expectKind<TemplateSpecializationNotDefined>(19, "Template specialization not defined");
    expectKind<NotYetImplemented>(20, "Not yet implemented");
}

TEST(Exception, APlainOneReportsCodeOneAndUnknownException)
{
    Zyl2::Exception::Exception const plain;
    EXPECT_EQ(plain.errorCode(), 1);
    EXPECT_EQ(std::string(plain.what()), "Unknown Exception");
    EXPECT_EQ(std::string(Zyl2::Exception::Exception("x").what()), "x");
}

TEST(Exception, ThroughTheStandardBaseItSaysTheSameText)
{
    InvalidArguments const withText("x");
    InvalidArguments const withoutText;
    EXPECT_EQ(std::string(static_cast<std::exception const&>(withText).what()), "x");
    EXPECT_EQ(std::string(static_cast<std::exception const&>(withoutText).what()),
              "Invalid arguments");
}

TEST(Exception, TheRootInterfaceHasNoTextAndCodeOne)
{
    Base const base;
    EXPECT_EQ(base.what(), nullptr);
    EXPECT_EQ(base.errorCode(), 1);
}

TEST(Exception, ThroughTheRootInterfaceTheKindAnswers)
{
    OutOfBounds const exception("x");
    Base const& base = exception;
    EXPECT_EQ(std::string(base.what()), "x");
    EXPECT_EQ(base.errorCode(), 11);
}

TEST(Exception, TheMessageIsCopiedFromTheCaller)
{
    std::string text = "before";
    OverflowError const exception(text.c_str());
    text = "after!";
    EXPECT_EQ(std::string(exception.what()), "before");
}

template <typename Caught>
bool isCaughtAs()
{
    try {
        raise(UnderflowError("x"), "Zyl2/Some/Source", 1, "f");
    } catch (Caught const&) {
        return true;
    } catch (...) {
        return false;
    }
}

TEST(Exception, IsCaughtByKindByFamilyByStandardAndByBoostBase)
{
    EXPECT_TRUE(isCaughtAs<UnderflowError>());
    EXPECT_TRUE(isCaughtAs<Zyl2::Exception::Exception>());
    EXPECT_TRUE(isCaughtAs<Base>());
    EXPECT_TRUE(isCaughtAs<std::exception>());
    EXPECT_TRUE(isCaughtAs<boost::exception>());
    EXPECT_FALSE(isCaughtAs<OverflowError>());
}

TEST(Exception, TheThrownOneCanBeKeptAndThrownAgain)
{
    std::exception_ptr kept;
    try {
        raise(FileWriteException("Saving the buffer failed"), "Zyl2/Some/Source", 5, "f()");
    } catch (std::exception const&) {
        kept = std::current_exception();
    }
    Support::expectThrown<FileWriteException>(
        [&kept] { std::rethrow_exception(kept); },
        {7, "Saving the buffer failed", "f()", "Zyl2/Some/Source", 5});
}

TEST(Exception, ASentenceHasAsManyDigitsAsTellANumberFromItsNeighbours)
{
    EXPECT_EQ(sentence("holds ", 0.1), "holds 0.1");
    EXPECT_EQ(sentence(0.1F), "0.10000000149011612");
    EXPECT_EQ(sentence(1e300, " and ", -2), "1e+300 and -2");
}

TEST(Exception, ADetailIsKeptOnceItIsThere)
{
    FileWriteException const failure;
    attachDetail(failure, "");
    EXPECT_EQ(std::string(detail(failure)), "");
    attachDetail(failure, "the first");
    attachDetail(failure, "the second");
    EXPECT_EQ(std::string(detail(failure)), "the first");
}

} // namespace
