// Whatever a file holds, it is refused with one sentence, and Gmsh says nothing itself.

#include "GmshFile.h"

#include <support/Folder.h>

#include <exchange/Error.h>
#include <read/gmsh/FileEnds.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace GmshTest;

class DamagedGmshFile : public testing::Test
{
protected:
    DamagedGmshFile()
    {
        testing::internal::CaptureStderr();
        testing::internal::CaptureStdout();
    }

    ~DamagedGmshFile() override
    {
        EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
        EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    }

    static std::string errorOf(std::filesystem::path const& path)
    {
        try {
            Opened const opened(path, true);
        } catch (Exchange::Error const& error) {
            return error.what();
        }
        return "";
    }

    std::string errorOfContent(std::string const& content)
    {
        return errorOf(folder_.write("in.msh", content));
    }

    Support::Folder const folder_;
};

std::string const formatSection = "$MeshFormat\n2.2 0 8\n$EndMeshFormat\n";
std::string const nodesSection = "$Nodes\n3\n1 0 0 0\n2 1 0 0\n3 0 1 0\n$EndNodes\n";

std::string const elementSection = "$Elements\n1\n1 2 2 0 1 1 2 3\n$EndElements\n";

TEST_F(DamagedGmshFile, OnlyItsOwnFilesAreRecognised)
{
    EXPECT_TRUE(Gmsh::hasBeginning(folder_.write("a", formatSection)));
    for (char const* const content :
         {"", "$", "$MeshForma", "$NOD\n", "$Comments\nSystemCall \"true\";\n$MeshFormat\n",
          "<?xml version=\"1.0\"?>", "CDF\x01", "Point(1) = {};"}) {
        auto const path = folder_.write("b", content);
        EXPECT_FALSE(Gmsh::hasBeginning(path)) << content;
        EXPECT_EQ(errorOf(path),
                  "The file does not begin as a mesh of Gmsh does: with $MeshFormat.")
            << content;
    }
    EXPECT_FALSE(Gmsh::hasBeginning(folder_.path("nothing")));
    EXPECT_FALSE(Gmsh::hasBeginning(folder_.path("")));
}

TEST_F(DamagedGmshFile, FilesWithoutNodesAreRefused)
{
    EXPECT_EQ(errorOfContent(formatSection), "Gmsh finds no nodes in the file.");
    EXPECT_EQ(errorOfContent(formatSection + "$Nodes\n0\n$EndNodes\n"),
              "Gmsh finds no nodes in the file.");
}

TEST_F(DamagedGmshFile, NodesThatAreNotThereAreTold)
{
    std::string const error = errorOfContent(formatSection + nodesSection +
                                             "$Elements\n1\n1 2 2 0 1 1 2 99\n$EndElements\n");
    EXPECT_NE(error, "");
    EXPECT_EQ(error.find("/proc"), std::string::npos) << error;
}

TEST_F(DamagedGmshFile, UnknownVersionsAreRefused)
{
    EXPECT_NE(
        errorOfContent("$MeshFormat\n9.9 0 8\n$EndMeshFormat\n" + nodesSection + elementSection),
        "");
}

TEST_F(DamagedGmshFile, ASecondFileIsRefusedWhileOneIsOpen)
{
    auto const path = folder_.write("in.msh", formatSection + nodesSection + elementSection);
    Exchange::Report report;
    {
        auto const source = Gmsh::open(path, report);
        EXPECT_THROW(Gmsh::open(path, report), Exchange::Error);
        EXPECT_EQ(source->readParts().size(), 1u);
    }
    EXPECT_EQ(errorOf(path), "");
}

} // namespace
