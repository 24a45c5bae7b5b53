#include "TestFiles.h"
#include "support/Wanted.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using namespace TestFiles;

void expectRefusedWhenCut(std::filesystem::path const& path, std::size_t length)
{
    std::filesystem::resize_file(path, length);
    std::string const complaint = complaintAboutFile(path);
    EXPECT_FALSE(complaint.empty()) << "accepted when cut to " << length << " bytes";
    EXPECT_EQ(std::count(complaint.begin(), complaint.end(), '\n'), 0) << complaint;
}

TEST(Truncation, ASmallFileIsRefusedWhereverItIsCut)
{
    for (char const* name : {"he20", "he20_binary", "pe15_binary", "heat"}) {
        Folder const folder;
        std::string const content = contentOf(solverFile(name));
        auto const path = folder.write("in.frd", content);
        ASSERT_EQ(complaintAboutFile(path), "") << name;
        for (std::size_t length = content.size() - 1; length < content.size();
             length -= Support::stride(5))
            expectRefusedWhenCut(path, length);
    }
}

TEST(Truncation, TheExamplesAreRefusedWhereverTheyAreCut)
{
    for (char const* name : {"cantilever.frd", "cantilever_binary.frd"}) {
        Folder const folder;
        std::string const content = contentOf(exampleFile(name));
        auto const path = folder.write("in.frd", content);
        ASSERT_EQ(complaintAboutFile(path), "") << name;
        for (std::size_t cut = 1; cut <= 8; ++cut)
            expectRefusedWhenCut(path, content.size() - cut);
        constexpr std::size_t parts = Support::isSanitized ? 3 : 25;
        std::size_t const stride = content.size() / parts;
        for (std::size_t part = parts; part-- > 0;)
            expectRefusedWhenCut(path, part * stride);
    }
}

} // namespace
