#ifndef TESTS_SUPPORT_THROWSITE_H
#define TESTS_SUPPORT_THROWSITE_H

#include <Zyl2/Exception/Exception.h>

#include <boost/exception/get_error_info.hpp>
#include <boost/exception/info.hpp>

#include <gtest/gtest.h>

#include <string>

namespace Support {

/// What a test expects of an exception; an empty function or file, or a line of 0, is not compared.
struct Thrown
{
    int code;
    std::string text;
    /// A part of the throwing function's signature.
    std::string function;
    std::string file;
    int line = 0;
};

inline void compare(Zyl2::Exception::Exception const& exception, Thrown const& expected)
{
    EXPECT_EQ(exception.errorCode(), expected.code);
    EXPECT_EQ(std::string(exception.what()), expected.text);
    char const* const* const function = boost::get_error_info<boost::throw_function>(exception);
    char const* const* const file = boost::get_error_info<boost::throw_file>(exception);
    int const* const line = boost::get_error_info<boost::throw_line>(exception);
    ASSERT_NE(function, nullptr);
    ASSERT_NE(file, nullptr);
    ASSERT_NE(line, nullptr);
    if (!expected.function.empty()) {
        EXPECT_NE(std::string(*function).find(expected.function), std::string::npos) << *function;
    }
    if (!expected.file.empty()) {
        EXPECT_EQ(std::string(*file), expected.file);
    }
    if (expected.line != 0) {
        EXPECT_EQ(*line, expected.line);
    }
}

/// Runs `action` and compares the exception of exactly kind `Kind` that it has to throw.
template <typename Kind, typename Action>
void expectThrown(Action action, Thrown const& expected)
{
    try {
        action();
    } catch (Kind const& exception) {
        compare(exception, expected);
        return;
    } catch (std::exception const& exception) {
        FAIL() << "another kind was thrown: " << exception.what();
    }
    FAIL() << "nothing was thrown";
}

} // namespace Support

#endif
