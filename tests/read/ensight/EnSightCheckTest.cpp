#include "EnSightSample.h"
#include "read/vtk/OpenedFile.h"

#include <exchange/Error.h>
#include <read/ensight/EnSightCheck.h>

#include "support/Folder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

namespace {

using Support::Folder;
using VtkRead::FileKind;
using Floats = std::vector<float>;
using Format = EnSightEncoder::Format;

template <typename Values>
void print(std::ostream& stream, Values const& values)
{
    for (auto const value : values)
        stream << value << ' ';
    stream << '\n';
}

/// All that a translation gets of a case.
std::string contentOf(std::filesystem::path const& caseFile)
{
    OpenedFile const file(FileKind::EnSight, caseFile);
    std::ostringstream stream;
    for (Exchange::Part const& part : file.parts) {
        stream << part.name << '\n';
        print(stream, part.coordinates);
        print(stream, part.nodeIds);
        print(stream, part.connectivity);
        print(stream, part.elementIds);
    }
    for (std::size_t step = 0; step < file.steps.size(); ++step)
        for (Exchange::Field const& field : file.fields[step]) {
            stream << field.name << ' ' << field.part << '\n';
            std::visit([&](auto const& values) { print(stream, values); }, field.values);
        }
    return stream.str();
}

std::string complaintAbout(std::filesystem::path const& caseFile)
{
    return OpenedFile::complaint(FileKind::EnSight, caseFile);
}

/// What is said before VTK reads anything.
std::string complaintOfCheck(std::filesystem::path const& caseFile)
{
    Exchange::Report report;
    try {
        VtkRead::requireWholeFiles(caseFile, report);
    } catch (Exchange::Error const& error) {
        return error.what();
    }
    std::vector<std::string> const warnings = report.warnings();
    return warnings.empty() ? std::string() : warnings.back();
}

bool isSentence(std::string const& text)
{
    return !text.empty() && text.back() == '.' && text.find('\n') == std::string::npos;
}

struct Kind
{
    char const* name;
    Format format;
    bool isGold;
};

class EnSightOfKind : public ::testing::TestWithParam<Kind>
{
protected:
    static Floats valuesOf(OpenedFile const& file, std::string const& name, std::size_t step,
                           std::size_t part)
    {
        return std::get<Floats>(file.field(name, step, part).values);
    }

    /// Cuts a file everywhere, or at every other byte, of which all ends of sections of a binary
    /// file are some. What is neither refused nor suspected has to
    /// have all values.
    void expectNoLossByCuts(std::string const& name, EnSightEncoder const& file)
    {
        std::filesystem::path const path = folder_.path(name);
        std::size_t const size = file.content().size();
        if (file.isText()) {
            std::filesystem::resize_file(path, size - 1);
            EXPECT_EQ(complaintOfCheck(case_), "") << name;
            EXPECT_EQ(contentOf(case_), whole_) << name;
        }
        std::size_t const step = file.isText() ? 1 : 2;
        for (std::size_t cut = 2; cut <= size; cut += step) {
            std::filesystem::resize_file(path, size - cut);
            EXPECT_TRUE(isSentence(complaintOfCheck(case_))) << name << " without " << cut;
        }
        folder_.write(name, file.content());
    }

    static std::size_t lastPartOf(std::string const& content)
    {
        return content.rfind("part") - (GetParam().format == Format::Fortran ? 4 : 0);
    }

    EnSightSample sample_{GetParam().format, GetParam().isGold};
    Folder folder_;
    std::filesystem::path case_ = sample_.writeTo(folder_);
    std::string whole_ = contentOf(case_);
};

TEST_P(EnSightOfKind, WholeFilesAreRead)
{
    OpenedFile const file(FileKind::EnSight, case_);
    ASSERT_EQ(file.parts.size(), GetParam().isGold ? 3U : 2U);
    ASSERT_EQ(file.steps.size(), 2U);
    EXPECT_EQ(file.parts[0].name, "Solid");
    EXPECT_EQ(file.parts[0].elementCount(), 3U);
    EXPECT_EQ(file.parts[1].elementCount(), 1U);
    for (std::size_t step = 0; step < 2; ++step) {
        auto const first = static_cast<float>(10 * (step + 1));
        Floats const values = valuesOf(file, "T", step, 0);
        EXPECT_EQ(values.front(), first);
        EXPECT_EQ(values[values.size() - values.size() / 12], first + 1.25F * 11);
        Floats const vectors = valuesOf(file, "V", step, 0);
        EXPECT_EQ(Floats(vectors.end() - 3, vectors.end()), (Floats{43.75F, 143.75F, 243.75F}));
        Floats const tensors = valuesOf(file, "S", step, 0);
        EXPECT_EQ(Floats(tensors.end() - 6, tensors.end()), (Floats{50, 150, 250, 350, 550, 450}));
    }
    std::size_t const last = GetParam().isGold ? 2 : 1;
    EXPECT_EQ(valuesOf(file, "E", 1, last), EnSightSample::component(90, last));
    if (GetParam().isGold) {
        EXPECT_EQ(valuesOf(file, "T", 1, 1),
                  EnSightSample::component(20, EnSightSample::gridNodes));
        EXPECT_EQ(valuesOf(file, "E", 1, 1), Floats{70});
    }
}

TEST_P(EnSightOfKind, FilesThatWereCutOffAreRefused)
{
    for (auto const& [name, file] : sample_.files())
        if (name != "T1")
            expectNoLossByCuts(name, file);
}

TEST_P(EnSightOfKind, FilesOfSeveralStepsAreWalkedThrough)
{
    case_ = sample_.writeSeriesTo(folder_);
    if (GetParam().format == Format::Fortran) {
        EXPECT_EQ(complaintAbout(case_),
                  "VTK can't read Fortran binary files with several steps in a file.");
        return;
    }
    if (GetParam().format == Format::C && !GetParam().isGold) {
        EXPECT_EQ(complaintAbout(case_),
                  "VTK can't read binary files of EnSight 6 with several steps in a file.");
        return;
    }
    EXPECT_EQ(complaintOfCheck(case_), "");
    EXPECT_EQ(contentOf(case_), whole_);
    expectNoLossByCuts("T", sample_.seriesFiles().at("T"));
    std::filesystem::path const mesh = folder_.path("mesh");
    std::filesystem::resize_file(mesh, std::filesystem::file_size(mesh) - 2);
    EXPECT_TRUE(isSentence(complaintOfCheck(case_)));
}

TEST_P(EnSightOfKind, OneVariableOfTheFirstPartsIsReadAndTold)
{
    for (std::string const name : {"E", "S"}) {
        std::string const& content = sample_.files().at(name).content();
        folder_.write(name, content.substr(0, lastPartOf(content)));
        OpenedFile const file(FileKind::EnSight, case_);
        EXPECT_EQ(file.warnings(),
                  (std::vector<std::string>{"The file '" + folder_.path(name).string() +
                                            "' has no values of the last parts, or was cut off "
                                            "behind a part."}));
        EXPECT_NO_THROW(file.field(name, 1, 0));
        EXPECT_THROW(file.field(name, 1, file.parts.size() - 1), std::runtime_error);
        folder_.write(name, content);
    }
}

TEST_P(EnSightOfKind, SeveralFilesMayEndWithTheSamePart)
{
    using Names = std::vector<std::string>;
    for (std::string const& name : GetParam().isGold ? Names{"T0", "T1"} : Names{"E", "S"}) {
        std::string const& content = sample_.files().at(name).content();
        folder_.write(name, content.substr(0, lastPartOf(content)));
    }
    OpenedFile const file(FileKind::EnSight, case_);
    std::string const name = GetParam().isGold ? "T" : "E";
    EXPECT_NO_THROW(file.field(name, 1, 0));
    EXPECT_THROW(file.field(name, 1, file.parts.size() - 1), std::runtime_error);
}

TEST_P(EnSightOfKind, MeasuredPointsThatWereCutOffAreRefused)
{
    constexpr bool isGold = false;
    EnSightEncoder points(GetParam().format, isGold);
    points.format();
    points.line("made by a test");
    points.line("particle coordinates");
    points.integers({2}, 1);
    points.rowsWithIds({1, 2}, {{0, 0, 0}, {1, 1, 1}});
    EnSightEncoder values(GetParam().format, isGold);
    values.line("velocity");
    values.reals({1, 2, 3, 4, 5, 6});
    case_ = folder_.write("in.case", std::string("FORMAT\ntype: ensight") +
                                         (GetParam().isGold ? " gold" : "") +
                                         "\nGEOMETRY\nmeasured: points\n"
                                         "VARIABLE\nvector per measured node: W values\n");
    if (!GetParam().isGold || GetParam().format == Format::Fortran) {
        folder_.write("points", points.content());
        folder_.write("values", values.content());
        EXPECT_EQ(complaintOfCheck(case_), GetParam().isGold
                                               ? "VTK misreads measured points in Fortran binary "
                                                 "files."
                                               : "VTK misreads measured points of EnSight 6.");
        return;
    }
    for (auto const& [name, file] : {std::pair("points", points), std::pair("values", values)}) {
        std::string const& content = file.content();
        folder_.write("points", points.content());
        folder_.write("values", values.content());
        EXPECT_EQ(complaintOfCheck(case_), "");
        for (std::size_t length = content.size() - 1; length-- > 0;) {
            std::filesystem::resize_file(folder_.path(name), length);
            EXPECT_TRUE(isSentence(complaintOfCheck(case_))) << name << " of " << length;
        }
    }
}

TEST_P(EnSightOfKind, TheTranslationSaysWhichFileWasCutOff)
{
    auto const path = folder_.path("V");
    std::filesystem::resize_file(path, std::filesystem::file_size(path) - 5);
    EXPECT_EQ(complaintAbout(case_),
              "The file '" + path.string() + "' ends before its last value.");
}

INSTANTIATE_TEST_SUITE_P(All, EnSightOfKind,
                         ::testing::Values(Kind{"GoldText", Format::Text, true},
                                           Kind{"GoldBinary", Format::C, true},
                                           Kind{"GoldFortran", Format::Fortran, true},
                                           Kind{"OldText", Format::Text, false},
                                           Kind{"OldBinary", Format::C, false}),
                         [](auto const& one) { return std::string(one.param.name); });

} // namespace
