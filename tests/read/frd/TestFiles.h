#ifndef TESTS_READ_FRD_TESTFILES_H
#define TESTS_READ_FRD_TESTFILES_H

#include "support/Folder.h"

#include <read/frd/Reader.h>

#include <filesystem>
#include <string>
#include <vector>

namespace TestFiles {

using Support::contentOf;
using Support::Folder;

/// Small results of the solver, one element each, by name without ending.
std::filesystem::path solverFile(std::string const& name);
std::filesystem::path exampleFile(std::string const& name);

/// The four-byte and eight-byte images of numbers in a binary file.
std::string bytes(std::int32_t value);
std::string bytes(float value);
std::string bytes(double value);

/// Text with every occurrence of `from` replaced.
std::string replaced(std::string text, std::string const& from, std::string const& to);

/// The nodes 3, 1, 2, 9 and the triangle 5 of group 7 and material 2 over 1, 2 and 3, long lines.
std::string triangleMesh();
/// A displacement of the nodes 1 and 2, long lines, without parameter records.
std::string displacementBlock();
/// Header, mesh, one displacement and the end record.
std::string triangleFile();

/// Two lines over the nodes 30, 10 and 20, and a displacement of 20 and 30: in binary, with floats
/// or doubles.
std::string binaryFile(bool isDouble, double last = -6.5);

/// All result blocks of a file of that content.
std::vector<Frd::ResultBlock> blocksOf(std::string const& content);
std::vector<Frd::ResultBlock> blocksOfFile(std::filesystem::path const& path);

/// What the reader says of a file of that content: the message of the error that reading it whole
/// raises, or nothing.
std::string complaintAbout(std::string const& content);
std::string complaintAboutFile(std::filesystem::path const& path);

} // namespace TestFiles

#endif
