#include "TestFiles.h"

#include <sstream>

#include <read/frd/Error.h>

#include <cstring>
#include <stdexcept>

namespace TestFiles {

namespace {

template <typename T>
std::string image(T value)
{
    std::string result(sizeof(T), '\0');
    std::memcpy(&result[0], &value, sizeof(T));
    return result;
}

} // namespace

std::filesystem::path solverFile(std::string const& name)
{
    return std::filesystem::path(FRD_TEST_DATA) / (name + ".frd");
}

std::filesystem::path exampleFile(std::string const& name)
{
    return std::filesystem::path(EXAMPLE_DATA) / name;
}

std::string bytes(std::int32_t value)
{
    return image(value);
}

std::string bytes(float value)
{
    return image(value);
}

std::string bytes(double value)
{
    return image(value);
}

std::string replaced(std::string text, std::string const& from, std::string const& to)
{
    auto at = text.find(from);
    if (at == std::string::npos)
        throw std::runtime_error("the test's text does not hold " + from);
    for (; at != std::string::npos; at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
    return text;
}

std::string triangleMesh()
{
    return "    2C                             4                                     1\n"
           " -1         3 0.00000E+00 1.00000E+00 0.00000E+00\n"
           " -1         1 0.00000E+00 0.00000E+00 0.00000E+00\n"
           " -1         2 1.00000E+00 0.00000E+00-2.50000E-01\n"
           " -1         9 7.00000E+00 8.00000E+00 9.00000E+00\n"
           " -3\n"
           "    3C                             1                                     1\n"
           " -1         5    7    7    2\n"
           " -2         1         2         3\n"
           " -3\n";
}

std::string displacementBlock()
{
    return "  100CL  101 5.00000E-01           2                     0    1           1\n"
           " -4  DISP        4    1\n"
           " -5  D1          1    2    1    0\n"
           " -5  D2          1    2    2    0\n"
           " -5  D3          1    2    3    0\n"
           " -5  ALL         1    2    0    0    1ALL\n"
           " -1         2 1.00000E+00 2.00000E+00 3.00000E+00\n"
           " -1         1-1.00000E+00-2.00000E+00-3.00000E+00\n"
           " -3\n";
}

std::string triangleFile()
{
    return "    1C\n" + triangleMesh() + displacementBlock() + " 9999\n";
}

std::string binaryFile(bool isDouble, double last)
{
    std::ostringstream file;
    auto const integers = [&file](std::vector<std::int32_t> const& values) {
        for (std::int32_t const value : values)
            file << bytes(value);
    };
    auto const nodeOf = [&](std::int32_t id, std::vector<double> const& values) {
        integers({id});
        for (double const value : values)
            file << (isDouble ? bytes(value) : bytes(static_cast<float>(value)));
    };
    char const format = isDouble ? '3' : '2';
    file << "    1C\n    2C                             3                                     "
         << format << '\n';
    nodeOf(30, {0, 1, -0.5});
    nodeOf(10, {2, 0, 0});
    nodeOf(20, {0.25, 0, 0});
    file << "    3C                             2                                     " << format
         << '\n';
    integers({4, 11, 6, 1, 20, 30});
    integers({8, 7, -1, 2, 10, 20, 30});
    file << "  100CL  101 5.00000E-01           2                     0    1           " << format
         << "\n -4  DISP        4    1\n"
            " -5  D1          1    2    1    0\n"
            " -5  D2          1    2    2    0\n"
            " -5  D3          1    2    3    0\n"
            " -5  ALL         1    2    0    0    1ALL\n";
    nodeOf(20, {1, 2, 3});
    nodeOf(30, {4, 5, last});
    file << " 9999\n";
    return file.str();
}

std::vector<Frd::ResultBlock> blocksOf(std::string const& content)
{
    Folder const folder;
    return blocksOfFile(folder.write("in.frd", content));
}

std::vector<Frd::ResultBlock> blocksOfFile(std::filesystem::path const& path)
{
    Frd::Reader reader(path);
    std::vector<Frd::ResultBlock> blocks;
    Frd::ResultBlock block;
    while (reader.next(block))
        blocks.push_back(block);
    return blocks;
}

std::string complaintAbout(std::string const& content)
{
    Folder const folder;
    return complaintAboutFile(folder.write("in.frd", content));
}

std::string complaintAboutFile(std::filesystem::path const& path)
{
    try {
        blocksOfFile(path);
        return "";
    } catch (Frd::Error const& error) {
        return error.what();
    }
}

} // namespace TestFiles
