#include "TestFiles.h"

#include <gtest/gtest.h>

namespace {

using namespace TestFiles;

/// Replaces one piece of the triangle file, whose lines are:
///  1 1C   2 2C   3-6 nodes 3, 1, 2, 9   7 -3   8 3C   9 -1   10 -2   11 -3
/// 12 100C   13 -4   14-17 -5   18, 19 values of nodes 2, 1   20 -3   21 9999
std::string complaintWith(std::string const& from, std::string const& to)
{
    return complaintAbout(replaced(triangleFile(), from, to));
}

std::string const nodeHead =
    "    2C                             4                                     1\n";
std::string const elementHead =
    "    3C                             1                                     1\n";
std::string const resultHead =
    "  100CL  101 5.00000E-01           2                     0    1           1\n";

/// A node head that announces binary doubles.
std::string binaryNodes(std::string const& count, std::string const& records)
{
    return "    1C\n    2C                " + std::string(14 - count.size(), ' ') + count +
           "                                     3\n" + records;
}

TEST(MalformedFile, AnEmptyFileIsRefused)
{
    EXPECT_EQ(complaintAbout(""), "The file is empty.");
}

TEST(MalformedFile, AForeignFileIsRefused)
{
    std::string const expected = "This is not a result file: it does not begin with a 1C record.";
    EXPECT_EQ(complaintAbout("solid cube\n"), expected);
    EXPECT_EQ(complaintAbout("\x89PNG\r\n\x1A\n"), expected);
    EXPECT_EQ(complaintAbout("  "), expected);
    EXPECT_EQ(complaintAbout("    2C\n"), expected);
}

TEST(MalformedFile, AnUnknownRecordIsRefused)
{
    EXPECT_EQ(complaintWith("    3C", "    4C"), "line 8: The record \"    4C\" is unknown.");
    EXPECT_EQ(complaintWith(" 9999", "garbage"), "line 21: The record \"garbag\" is unknown.");
    EXPECT_EQ(complaintWith(" 9999", "\n 9999"), "line 21: The record \"\" is unknown.");
    EXPECT_EQ(complaintWith(" 9999", " 99991"), "line 21: The record \" 99991\" is unknown.");
}

TEST(MalformedFile, AMissingEndIsRefused)
{
    EXPECT_EQ(complaintWith(" 9999\n", ""),
              "line 20: The file ends without its end record (9999).");
}

TEST(MalformedFile, AnythingBehindTheEndIsRefused)
{
    EXPECT_EQ(complaintAbout(triangleFile() + "    1C\n"),
              "line 22: Something stands behind the end record (9999).");
}

TEST(MalformedFile, ControlCharactersAreRefused)
{
    EXPECT_EQ(complaintWith("D2 ", "D2\x02"), "line 15: The line holds a control character.");
}

TEST(MalformedFile, AnOverlongLineIsRefused)
{
    EXPECT_EQ(complaintWith("ALL\n", std::string(2000, 'x') + "\n"),
              "line 17: The line is overlong.");
}

TEST(MalformedFile, BlocksInTheWrongOrderAreRefused)
{
    EXPECT_EQ(complaintAbout("    1C\n" + elementHead + " -3\n 9999\n"),
              "line 2: The element block stands before the nodes.");
    EXPECT_EQ(complaintAbout("    1C\n" + displacementBlock() + " 9999\n"),
              "line 2: A result block stands before the nodes.");
}

TEST(MalformedFile, SecondMeshesAreRefused)
{
    EXPECT_EQ(complaintWith(" 9999", triangleMesh() + " 9999"),
              "line 21: There is a second node block.");
    EXPECT_EQ(complaintWith(" 9999", elementHead + " 9999"),
              "line 21: There is a second element block.");
}

TEST(MalformedFile, HeadsOfTheMeshAreChecked)
{
    EXPECT_EQ(complaintWith(nodeHead, "    2C\n"), "line 2: The format \"\" is not an integer.");
    EXPECT_EQ(complaintWith(nodeHead, replaced(nodeHead, " 4 ", "4x ")),
              "line 2: The number of records \"4x\" is not an integer.");
    EXPECT_EQ(complaintWith(nodeHead, replaced(nodeHead, " 4 ", "-4 ")),
              "line 2: The number of records is negative.");
    EXPECT_EQ(complaintWith(nodeHead, replaced(nodeHead, "1\n", "4\n")),
              "line 2: The block's format 4 is not one of 0 to 3.");
    EXPECT_EQ(complaintWith(nodeHead, replaced(nodeHead, "1\n", "1 x\n")),
              "line 2: Unexpected text \"x\" at the end of the line.");
}

TEST(MalformedFile, NodesMustBeAsManyAsAnnounced)
{
    EXPECT_EQ(complaintWith(nodeHead, replaced(nodeHead, " 4 ", " 5 ")),
              "line 7: The block announces 5 nodes and holds 4.");
    EXPECT_EQ(complaintWith(nodeHead, replaced(nodeHead, "           4 ", "999999999999 ")),
              "line 7: The block announces 999999999999 nodes and holds 4.");
}

TEST(MalformedFile, LinesOfNodesAreChecked)
{
    EXPECT_EQ(complaintWith(" 8.00000E+00", " 8.0x000E+00"),
              "line 6: The y coordinate \"8.0x000E+00\" is not a number.");
    EXPECT_EQ(complaintWith("         9 7.0", "       9.0 7.0"),
              "line 6: The node number \"9.0\" is not an integer.");
    EXPECT_EQ(complaintWith(" 9.00000E+00\n", "\n"),
              "line 6: The z coordinate \"\" is not a number.");
    EXPECT_EQ(complaintWith(" 9.00000E+00\n", " 9.00000E+00 1.0\n"),
              "line 6: Unexpected text \"1.0\" at the end of the line.");
    EXPECT_EQ(complaintWith(" -1         9 7.0", " -2         9 7.0"),
              "line 6: Neither a node (-1) nor the end of the node block (-3) stands here.");
}

TEST(MalformedFile, ANodeDefinedTwiceIsRefused)
{
    EXPECT_EQ(complaintWith("         9 7.0", "         3 7.0"),
              "line 6: Node 3 is defined twice.");
}

TEST(MalformedFile, NodeNumbersMustFitInThirtyTwoBits)
{
    EXPECT_EQ(complaintWith("         9 7.0", "        -9 7.0"),
              "line 6: The node number -9 is not within 0 to 4294967295.");
    EXPECT_EQ(complaintWith("         9 7.0", "4294967296 7.0"),
              "line 6: The node number 4294967296 is not within 0 to 4294967295.");
    EXPECT_EQ(complaintWith("         9 7.0", "4294967295 7.0"), "");
}

TEST(MalformedFile, ElementsMustBeAsManyAsAnnounced)
{
    EXPECT_EQ(complaintWith(elementHead, replaced(elementHead, " 1 ", " 2 ")),
              "line 11: The block announces 2 elements and holds 1.");
}

TEST(MalformedFile, AnUnknownElementTypeIsRefused)
{
    EXPECT_EQ(complaintWith("    7    7    2", "   13    7    2"),
              "line 9: Element 5 has the unknown type 13.");
    EXPECT_EQ(complaintWith("    7    7    2", "    0    7    2"),
              "line 9: Element 5 has the unknown type 0.");
}

TEST(MalformedFile, LinesOfElementsAreChecked)
{
    EXPECT_EQ(complaintWith("    7    7    2", "    7    7   2x"),
              "line 9: The material number \"2x\" is not an integer.");
    EXPECT_EQ(complaintWith("    7    7    2", "    7    7    2    3"),
              "line 9: Unexpected text \"3\" at the end of the line.");
    EXPECT_EQ(complaintWith(" -2         1         2         3\n", " -3\n"),
              "line 10: An element's nodes (-2) are missing.");
    EXPECT_EQ(complaintWith(" -2         1         2         3\n", " -2         1         2\n"),
              "line 10: The node number \"\" is not an integer.");
    EXPECT_EQ(complaintWith("         2         3\n", "         2         3         9\n"),
              "line 10: Unexpected text \"9\" at the end of the line.");
    EXPECT_EQ(complaintWith(" -1         5    7", " -4         5    7"),
              "line 9: Neither an element (-1) nor the end of the element block (-3) stands here.");
}

TEST(MalformedFile, AnElementsUnknownNodeIsRefused)
{
    EXPECT_EQ(complaintWith("         2         3\n", "         2         4\n"),
              "line 10: An element refers to node 4, which does not exist.");
}

TEST(MalformedFile, AnElementDefinedTwiceIsRefused)
{
    std::string const element = " -1         5    7    7    2\n -2         1         2         3\n";
    EXPECT_EQ(complaintAbout(replaced(
                  replaced(triangleFile(), elementHead, replaced(elementHead, " 1 ", " 2 ")),
                  element, element + element)),
              "line 12: Element 5 is defined twice.");
}

TEST(MalformedFile, ParameterRecordsAreChecked)
{
    auto const complaint = [](std::string const& line) {
        return complaintWith(resultHead, line + "\n" + resultHead);
    };
    EXPECT_EQ(complaint("    1PSTEP"), "line 12: The block number \"\" is not an integer.");
    EXPECT_EQ(complaint("    1PSTEP                         1           x           1"),
              "line 12: The increment number \"x\" is not an integer.");
    EXPECT_EQ(complaint("    1PSTEP                         1           1  9999999999"),
              "line 12: The step number 9999999999 does not fit in 32 bits.");
    EXPECT_EQ(complaint("    1PMODE                         x"),
              "line 12: The mode number \"x\" is not an integer.");
    EXPECT_EQ(complaint("    1P"), "line 12: The parameter record (1P) is empty.");
}

TEST(MalformedFile, ParametersWithoutABlockAreRefused)
{
    EXPECT_EQ(complaintWith(" 9999", "    1PHID                         -1\n 9999"),
              "line 22: No result block follows the parameter records (1P).");
}

TEST(MalformedFile, HeadsOfResultsAreChecked)
{
    auto const complaint = [](std::string const& from, std::string const& to) {
        return complaintWith(resultHead, replaced(resultHead, from, to));
    };
    EXPECT_EQ(complaint("5.00000E-01", "5.0000xE-01"),
              "line 12: The value of the step \"5.0000xE-01\" is not a number.");
    EXPECT_EQ(complaint("           2 ", "           x "),
              "line 12: The number of nodes \"x\" is not an integer.");
    EXPECT_EQ(complaint("           2 ", "          -2 "),
              "line 12: The number of nodes is negative.");
    EXPECT_EQ(complaint(" 0    1 ", " 5    1 "),
              "line 12: The kind of analysis 5 is not one of 0 to 4.");
    EXPECT_EQ(complaint("    1    ", "    x    "),
              "line 12: The step number \"x\" is not an integer.");
    EXPECT_EQ(complaint(" 1\n", " 7\n"), "line 12: The block's format 7 is not one of 0 to 3.");
    EXPECT_EQ(complaint(" 1\n", "\n"), "line 12: The format \"\" is not an integer.");
}

TEST(MalformedFile, ComponentsAreChecked)
{
    EXPECT_EQ(complaintWith(" -4  DISP        4    1\n", ""),
              "line 13: The name of the result (-4) is missing.");
    EXPECT_EQ(complaintWith("DISP ", "     "), "line 13: The result has no name.");
    EXPECT_EQ(complaintWith("DISP        4    1", "DISP        0    1"),
              "line 13: The number of components is not positive.");
    EXPECT_EQ(complaintWith("DISP        4    1", "DISP        4    2"),
              "line 13: The result \"DISP\" is of kind 2, not of kind 1, values at nodes.");
    EXPECT_EQ(complaintWith("DISP        4    1", "DISP        5    1"),
              "line 18: The result \"DISP\" announces 5 components (-5) and has 4.");
    EXPECT_EQ(complaintWith("    0    1ALL", "    0    3ALL"),
              "line 17: The existence flag 3 is not one of 0 to 2.");
    EXPECT_EQ(complaintWith("D2          1    2", "D2          1    x"),
              "line 15: The kind of component \"x\" is not an integer.");
    EXPECT_EQ(
        complaintAbout(
            "    1C\n" + triangleMesh() + resultHead +
            " -4  ALL         1    1\n -5  ALL         1    2    0    0    1ALL\n -3\n 9999\n"),
        "line 14: The result \"ALL\" has no component with values.");
}

TEST(MalformedFile, NodesOfAResultMustBeAsManyAsAnnounced)
{
    EXPECT_EQ(complaintWith(resultHead, replaced(resultHead, " 2 ", " 3 ")),
              "line 20: The block announces 3 nodes and holds 2.");
}

TEST(MalformedFile, NodesOfAResultMustComeOnce)
{
    EXPECT_EQ(complaintWith("         1-1.0", "         2-1.0"),
              "line 19: The result \"DISP\" holds node 2 twice.");
}

TEST(MalformedFile, LinesOfValuesAreChecked)
{
    EXPECT_EQ(complaintWith("-3.00000E+00", "************"),
              "line 19: The value \"************\" is not a number.");
    EXPECT_EQ(complaintWith("-3.00000E+00", ""), "line 19: The value \"\" is not a number.");
    EXPECT_EQ(complaintWith("-3.00000E+00", "-3.00000E+00 1.0"),
              "line 19: Unexpected text \"1.0\" at the end of the line.");
    EXPECT_EQ(complaintWith(" -1         1-1.0", " -2         1-1.0"),
              "line 19: Neither a node (-1) nor the end of the result block (-3) stands here.");
}

TEST(MalformedFile, AMissingContinuationIsRefused)
{
    std::string components;
    for (int i = 1; i <= 7; ++i)
        components += " -5  C" + std::to_string(i) + "          1    1    0    0\n";
    EXPECT_EQ(
        complaintAbout("    1C\n" + triangleMesh() + replaced(resultHead, " 2 ", " 1 ") +
                       " -4  MANY        7    1\n" + components +
                       " -1         9 1.00000E+00 2.00000E+00 3.00000E+00 4.00000E+00 5.00000E+00 "
                       "6.00000E+00\n -3\n 9999\n"),
        "line 22: The node's further values (-2) are missing.");
}

TEST(MalformedFile, BinaryCountsMustFitInTheFileBeforeRoomIsMade)
{
    EXPECT_EQ(complaintAbout(binaryNodes("2", std::string(55, '\0'))),
              "line 2: The file ends in the node block: 2 records of 28 bytes do not fit in the 55 "
              "bytes left.");
    EXPECT_EQ(complaintAbout(binaryNodes("999999999999", "")),
              "line 2: The file ends in the node block: 999999999999 records of 28 bytes do not "
              "fit in the 0 bytes left.");
}

/// One node in binary, at bytes 82 to 109, then the line of the elements, 110 to 184.
std::string binaryMesh(std::int32_t nodeId, std::string const& elements)
{
    return binaryNodes("1", bytes(nodeId) + bytes(0.0) + bytes(0.0) + bytes(0.0)) +
           "    3C                             1                                     2\n" +
           elements;
}

TEST(MalformedFile, BinaryRecordsAreCheckedAndNamedByTheirOffsets)
{
    std::string const element = bytes(1) + bytes(11) + bytes(0) + bytes(1);
    EXPECT_EQ(complaintAbout(binaryMesh(-1, element)),
              "byte 82: The node number -1 is not within 0 to 4294967295.");
    EXPECT_EQ(complaintAbout(binaryNodes("2", bytes(4) + std::string(24, '\0') + bytes(4) +
                                                  std::string(24, '\0'))),
              "byte 110: Node 4 is defined twice.");
    EXPECT_EQ(complaintAbout(binaryMesh(4, bytes(1) + bytes(99) + bytes(0) + bytes(1))),
              "byte 185: Element 1 has the unknown type 99.");
    EXPECT_EQ(complaintAbout(binaryMesh(4, element + bytes(4) + bytes(5))),
              "byte 201: An element refers to node 5, which does not exist.");
    EXPECT_EQ(complaintAbout(binaryMesh(4, element + bytes(4))),
              "byte 201: The file ends in the element block.");
    EXPECT_EQ(complaintAbout(binaryMesh(4, bytes(1))),
              "byte 110: The file ends in the element block: 1 records of 16 bytes do not fit in "
              "the 4 bytes left.");
}

TEST(MalformedFile, LinesBehindBinaryRecordsAreNamedByTheirOffsets)
{
    std::string const mesh =
        binaryMesh(4, bytes(1) + bytes(11) + bytes(0) + bytes(1) + bytes(4) + bytes(4));
    EXPECT_EQ(complaintAbout(mesh + " 9999\n"), "");
    EXPECT_EQ(complaintAbout(mesh + "    7C\n"), "byte 209: The record \"    7C\" is unknown.");
    EXPECT_EQ(complaintAbout(mesh), "byte 209: The file ends without its end record (9999).");
}

} // namespace
