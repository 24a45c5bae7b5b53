// The version stands twice: in Version.h for hosts, in CMakeLists.txt for packages and the file's
// name.

#include <Zyl2/Version.h>

#include <gtest/gtest.h>

#include <string>

namespace {

std::string const projectVersion = PROJECT_VERSION;

TEST(Version, OfTheHeadersIsThatOfTheProject)
{
    EXPECT_EQ(ZYL2_VERSION_STRING, projectVersion);
    EXPECT_EQ(std::to_string(ZYL2_VERSION_MAJOR) + "." + std::to_string(ZYL2_VERSION_MINOR) + "." +
                  std::to_string(ZYL2_VERSION_PATCH),
              projectVersion);
}

TEST(Version, OfTheLibraryIsThatOfTheProject)
{
    EXPECT_EQ(Zyl2::versionString(), projectVersion);
    EXPECT_EQ(Zyl2::version(), ZYL2_VERSION);
}

TEST(Version, NewerOnesHaveLargerNumbers)
{
    EXPECT_LT(ZYL2_VERSION_NUMBER(0, 9, 999), ZYL2_VERSION_NUMBER(0, 10, 0));
    EXPECT_LT(ZYL2_VERSION_NUMBER(0, 999, 999), ZYL2_VERSION_NUMBER(1, 0, 0));
}

} // namespace
