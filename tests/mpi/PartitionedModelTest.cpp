#include "mpi/WrittenPieces.h"

#include "moxread/Model.h"
#include "moxread/Verify.h"
#include "support/WritingRecord.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <random>
#include <set>
#include <sstream>
#include <thread>

#include <unistd.h>

using Zyl2::Mox2::ArrayView;
using Zyl2::Mox2::Attributes;
using Zyl2::Mox2::DatasetType;
using Zyl2::Mox2::NodeType;
using Zyl2::Mox2::Step;
using Zyl2::Mpi::PartitionedModel;
using Zyl2::Mpi::PartitionedOptions;

namespace {

std::string contentOf(std::string const& path)
{
    std::ostringstream content;
    content << std::ifstream(path, std::ios::binary).rdbuf();
    return content.str();
}

std::vector<std::string> filesIn(std::string const& folder)
{
    std::vector<std::string> files;
    for (auto const& entry : std::filesystem::directory_iterator(folder))
        files.push_back(entry.path().filename());
    std::sort(files.begin(), files.end());
    return files;
}

/// What is in the models of a folder, apart from when they were written.
std::vector<std::string> modelsIn(std::string const& folder)
{
    std::vector<std::string> models;
    for (std::string const& file : filesIn(folder))
        if (std::filesystem::path(file).extension() == ".mox")
            models.push_back(Support::withoutWritingRecord(folder + "/" + file));
    return models;
}

void emptyFolder(FirstRanks const& ranks, std::string const& folder)
{
    MPI_Barrier(ranks.comm());
    if (ranks.rank() == 0)
        for (std::string const& file : filesIn(folder))
            std::filesystem::remove(folder + "/" + file);
    MPI_Barrier(ranks.comm());
}

PartitionedOptions sharing(int ranksPerFile)
{
    PartitionedOptions options;
    options.ranksPerFile = ranksPerFile;
    options.messageBytes = 4096;
    options.saver.overwrite = true;
    return options;
}

std::vector<MoxRead::Node const*> geometriesOf(MoxRead::Model const& model)
{
    std::vector<MoxRead::Node const*> geometries;
    for (MoxRead::Node const& node : model.nodes())
        if (node.geometry() != nullptr)
            geometries.push_back(&node);
    return geometries;
}

void expectPiece(MoxRead::Model& model, MoxRead::Node const& geometry, int rank, int ranks)
{
    Piece const piece(rank, ranks);
    auto const find = [&](std::string const& name) -> MoxRead::Variable const& {
        MoxRead::Variable const* const variable = model.variable(geometry.id, name);
        EXPECT_NE(variable, nullptr) << name;
        return *variable;
    };
    EXPECT_EQ(model.read(find("Coordinates")).floats(), piece.coordinates());
    EXPECT_EQ(model.read(find("Node Ids")).words, piece.nodeIds());
    EXPECT_EQ(model.read(find("Connectivity")).words, piece.connectivity());
    MoxRead::Attributes const& attributes = find("Coordinates").attributes;
    EXPECT_EQ(attributes.at("Rank"), MoxRead::AttributeValue(static_cast<std::uint32_t>(rank)));
    EXPECT_EQ(attributes.at("Ranks"), MoxRead::AttributeValue(static_cast<std::uint32_t>(ranks)));
    for (int step = 1; step <= StepCount; ++step) {
        std::vector<double> const expected = piece.displacement(step);
        EXPECT_EQ(model.read(find("Displacement\x1EStep " + std::to_string(step))).floats(),
                  std::vector<float>(expected.begin(), expected.end()));
    }
}

template <typename T>
std::vector<T> withoutPattern(std::size_t count)
{
    std::mt19937 random;
    std::vector<T> values(count);
    for (T& value : values)
        value = static_cast<T>(random() >> 1U);
    return values;
}

/// Attributes of each type that a model stores.
Attributes attributesOfAllTypes()
{
    Attributes attributes;
    attributes.set("float", 0.25F);
    attributes.set("int", 7);
    attributes.set("unsigned", 4000000000U);
    attributes.set("text", "as it is");
    attributes.set("double", 1e300);
    attributes.set("long", 12L);
    return attributes;
}

/// What a model of either kind takes: each way to a node, all properties, and values of all types
/// with and without gaps, more of them than a message has room for.
template <typename ModelT>
void writeAllKinds(ModelT& model)
{
    using Zyl2::Mox2::PropertyType;
    Attributes const attributes = attributesOfAllTypes();
    model.addNode(NodeType::RootGroup, "Whole", attributes);
    auto const ids = model.addAssemblyComponents(std::map<std::string, Attributes>{
        {"", {}}, {"/Whole/Parts/", {}}, {"/Whole/Parts/Bar", {}}});
    unsigned int const parts = model.getNodeId({"Whole", "Parts"});
    EXPECT_EQ(ids[0], 0U);
    EXPECT_EQ(ids[1], parts);
    Zyl2::Mox2::NodeProperties place;
    place.set(PropertyType::Translation, std::vector<float>{1, 2, 3});
    place.set(PropertyType::Rotation, std::vector<float>{0, 0, 1, 0.5F});
    place.set(PropertyType::Scale, std::vector<float>{2, 2, 4});
    model.setNodeData(parts, place, attributes);
    Zyl2::Mox2::NodeProperties look;
    look.set(PropertyType::DiffuseColor, std::vector<float>{0.125F, 0.25F, 0.5F});
    look.set(PropertyType::SpecularColor, std::vector<float>{0.25F, 0.5F, 0.75F});
    look.set(PropertyType::EmissiveColor, std::vector<float>{0.5F, 0.75F, 1});
    look.set(PropertyType::Transparency, 0.375F);
    look.set(PropertyType::AmbientIntensity, 0.5F);
    look.set(PropertyType::Shininess, 0.625F);
    model.setNodeData(ids[2], look);
    // From the geometry over its shape to the group, for another shape there.
    model.setCurrentNodeId(ids[2]);
    model.moveToParentNode();
    EXPECT_EQ(model.moveToParentNode(), parts);
    unsigned int const beside = model.addNode(NodeType::Shape, "Beside");

    constexpr std::size_t rows = 5000;
    auto const add = [&](std::string const& name, DatasetType type, auto const* values) {
        model.addArrayProperty(name, type, ArrayView(values, rows), beside, Step(), attributes);
        constexpr auto size = static_cast<std::ptrdiff_t>(sizeof *values);
        model.addArrayProperty(name + ", turned", type,
                               ArrayView(values + rows - 1, rows, 1, -size, size), beside, Step());
    };
    std::vector<float> const floats(withoutPattern<float>(rows));
    std::vector<double> const doubles(withoutPattern<double>(rows));
    add("floats", DatasetType::Result10, floats.data());
    add("doubles", DatasetType::Result10, doubles.data());
    add("int", DatasetType::NodeIds, withoutPattern<int>(rows).data());
    add("unsigned", DatasetType::NodeIds, withoutPattern<unsigned int>(rows).data());
    add("long", DatasetType::NodeIds, withoutPattern<long>(rows).data());
    add("unsigned long", DatasetType::NodeIds, withoutPattern<unsigned long>(rows).data());
    Zyl2::Mox2::StepList steps(2);
    steps.set(0, Step("first", attributes));
    steps.set(1, Step("second"));
    model.addArrayProperty("in steps", DatasetType::Result10, floats, beside, steps);
}

void expectSameGroup(MoxRead::Node const& written, MoxRead::Node const& expected)
{
    ASSERT_NE(written.group(), nullptr);
    EXPECT_EQ(written.name, expected.name);
    EXPECT_EQ(written.group()->translation, expected.group()->translation);
    EXPECT_EQ(written.group()->rotation, expected.group()->rotation);
    EXPECT_EQ(written.group()->scale, expected.group()->scale);
    EXPECT_EQ(written.group()->attributes, expected.group()->attributes);
    EXPECT_EQ(written.group()->attributes.size(), 6U);
}

void expectSameShape(MoxRead::Node const& written, MoxRead::Node const& expected)
{
    ASSERT_NE(written.shape(), nullptr);
    EXPECT_EQ(written.name, expected.name);
    MoxRead::Material const& material = written.shape()->material;
    MoxRead::Material const& wanted = expected.shape()->material;
    EXPECT_EQ(material.diffuse, wanted.diffuse);
    EXPECT_EQ(material.specular, wanted.specular);
    EXPECT_EQ(material.emissive, wanted.emissive);
    EXPECT_EQ(material.ambient, wanted.ambient);
    EXPECT_EQ(material.transparency, wanted.transparency);
    EXPECT_EQ(material.shininess, wanted.shininess);
}

void expectSameArrays(MoxRead::Model& written, std::uint32_t geometry, MoxRead::Model& expected,
                      std::uint32_t expectedGeometry)
{
    auto const& variables = written.node(geometry).geometry()->variables;
    auto const& wanted = expected.node(expectedGeometry).geometry()->variables;
    ASSERT_EQ(variables.size(), wanted.size());
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        SCOPED_TRACE(wanted[i].name);
        EXPECT_EQ(variables[i].name, wanted[i].name);
        EXPECT_EQ(variables[i].linked, wanted[i].linked);
        EXPECT_EQ(variables[i].typeWord, wanted[i].typeWord);
        EXPECT_EQ(written.read(variables[i]).words, expected.read(wanted[i]).words);
        MoxRead::Attributes attributes = written.resolve(variables[i]).attributes;
        EXPECT_EQ(attributes.erase("Rank") + attributes.erase("Ranks"), 2U);
        EXPECT_EQ(attributes, expected.resolve(wanted[i]).attributes);
    }
}

class Delays
{
public:
    explicit Delays(unsigned int seed) : random_(seed) {}
    void operator()() { std::this_thread::sleep_for(std::chrono::microseconds(random_() % 2000)); }

private:
    std::mt19937 random_;
};

} // namespace

TEST(PartitionedModelTest, PutsThePieceOfEachRankIntoTheFileOfItsRanks)
{
    for (int const count : {1, 2, 4, 8}) {
        FirstRanks const ranks(count);
        if (!ranks.areMine())
            continue;
        std::string const folder = ranks.folder();
        for (int const ranksPerFile : {1, 2, count}) {
            PartitionedModel model(ranks.comm(), folder + "/wave.moxs", sharing(ranksPerFile));
            writePiece(model, Piece(ranks.rank(), count));
            model.close();
            if (ranks.rank() != 0)
                continue;
            for (int first = 0, file = 0; first < count; first += ranksPerFile, ++file) {
                std::string const path = folder + "/wave." + std::to_string(file) + ".mox";
                SCOPED_TRACE(path + " of " + std::to_string(count) + " ranks, " +
                             std::to_string(ranksPerFile) + " in a file");
                MoxRead::verify(path);
                MoxRead::Model written(path);
                auto const geometries = geometriesOf(written);
                int const shared = std::min(ranksPerFile, count - first);
                ASSERT_EQ(geometries.size(), static_cast<std::size_t>(shared));
                // The root and the group are there once, and a shape with its geometry per rank.
                EXPECT_EQ(written.nodes().size(), 2U + 2U * static_cast<std::size_t>(shared));
                EXPECT_EQ(written.node(2).group()->translation, (std::array<float, 3>{1, 2, 3}));
                EXPECT_EQ(written.unusedHeavyLength(), 0U);
                for (int i = 0; i < shared; ++i)
                    expectPiece(written, *geometries[static_cast<std::size_t>(i)], first + i,
                                count);
            }
        }
        if (ranks.rank() == 0)
            std::filesystem::remove_all(folder);
        MPI_Barrier(ranks.comm());
    }
}

// MOXWRITER_MPI_DELAYED_RUNS: how often each set is written, 3 unless set.
TEST(PartitionedModelTest, WritesTheSameWhoeverComesFirst)
{
    char const* const given = std::getenv("MOXWRITER_MPI_DELAYED_RUNS");
    unsigned int const runs = given == nullptr ? 3 : static_cast<unsigned int>(std::stoul(given));
    for (int const count : {1, 2, 4, 8}) {
        FirstRanks const ranks(count);
        if (!ranks.areMine())
            continue;
        std::string const folder = ranks.folder();
        auto const own = static_cast<unsigned int>(ranks.rank());
        for (int const ranksPerFile : std::set<int>{1, std::min(2, count), count}) {
            std::vector<std::string> first;
            for (unsigned int run = 0; run < runs; ++run) {
                PartitionedModel model(ranks.comm(), folder + "/wave.moxs", sharing(ranksPerFile));
                writePiece(model, Piece(ranks.rank(), count), Delays(run * 8 + own));
                model.close();
                std::vector<std::string> const written =
                    ranks.rank() == 0 ? modelsIn(folder) : std::vector<std::string>();
                if (run == 0)
                    first = written;
                EXPECT_EQ(written, first) << count << " ranks, " << ranksPerFile << " in a file";
                // Nobody writes anew what is still being read.
                MPI_Barrier(ranks.comm());
            }
            auto const files =
                static_cast<std::size_t>(ranks.rank() == 0 ? count / ranksPerFile : 0);
            EXPECT_EQ(first.size(), files);
            emptyFolder(ranks, folder);
        }
        if (ranks.rank() == 0)
            std::filesystem::remove_all(folder);
    }
}

TEST(PartitionedModelTest, IndexSaysOfWhichRanksAFileIsAndHowItIsKnownAgain)
{
    FirstRanks const ranks(4);
    if (!ranks.areMine())
        return;
    std::string const folder = ranks.folder();
    PartitionedModel model(ranks.comm(), folder + "/wave.moxs", sharing(3));
    std::string const begun = contentOf(folder + "/wave.moxs");
    MPI_Barrier(ranks.comm());
    EXPECT_NE(begun.find("\"complete\": false"), std::string::npos) << begun;
    EXPECT_NE(begun.find("{\"name\": \"wave.1.mox\", \"ranks\": [[3, 3]]}"), std::string::npos)
        << begun;
    writePiece(model, Piece(ranks.rank(), 4));
    model.close();
    std::string const finished = contentOf(folder + "/wave.moxs");
    EXPECT_NE(finished.find("\"complete\": true"), std::string::npos) << finished;
    EXPECT_NE(finished.find("\"name\": \"wave.0.mox\", \"ranks\": [[0, 2]], \"size\": " +
                            std::to_string(std::filesystem::file_size(folder + "/wave.0.mox"))),
              std::string::npos)
        << finished;
    MPI_Barrier(ranks.comm());
    if (ranks.rank() == 0)
        std::filesystem::remove_all(folder);
}

TEST(PartitionedModelTest, IndexNamesFilesWhateverTheirNamesHold)
{
    FirstRanks const ranks(2);
    if (!ranks.areMine())
        return;
    std::string const folder = ranks.folder();
    std::string const path = folder + "/a \"wave\" of\n\\two\x01.moxs";
    PartitionedModel model(ranks.comm(), path, sharing(1));
    writePiece(model, Piece(ranks.rank(), 2));
    model.close();
    if (ranks.rank() != 0)
        return;
    MoxRead::verify(path);
    EXPECT_EQ(geometriesOf(MoxRead::Model(path)).size(), 2U);
    std::filesystem::remove_all(folder);
}

TEST(PartitionedModelTest, RanksOfOneMachineShareAFileUnlessToldOtherwise)
{
    FirstRanks const ranks(2);
    if (!ranks.areMine())
        return;
    std::string const folder = ranks.folder();
    {
        PartitionedModel model(ranks.comm(), folder + "/wave.moxs");
        writePiece(model, Piece(ranks.rank(), 2));
        // The destructor closes.
    }
    EXPECT_EQ(filesIn(folder), (std::vector<std::string>{"wave.0.mox", "wave.moxs"}));
    MPI_Barrier(ranks.comm());
    if (ranks.rank() == 0)
        std::filesystem::remove_all(folder);
}

TEST(PartitionedModelTest, ComponentPathsOfARankLeadToItsOwnShapes)
{
    FirstRanks const ranks(2);
    if (!ranks.areMine())
        return;
    std::string const folder = ranks.folder();
    PartitionedModel model(ranks.comm(), folder + "/car.moxs", sharing(2));
    auto const ids =
        model.addAssemblyComponents({"/car/body/door", "/car/body/hood", "/car/rear/"});
    EXPECT_EQ(ids[0], 4U);
    EXPECT_EQ(ids[1], 6U);
    EXPECT_EQ(ids[2], 7U);
    EXPECT_EQ(model.addAssemblyComponents({"/car/body/door"})[0], 4U);
    EXPECT_EQ(model.getNodeId("/car/body/hood"), 5U);
    float const value = static_cast<float>(ranks.rank());
    model.addArrayProperty("Value", DatasetType::Result10, ArrayView(&value, 1), ids, Step());
    model.close();
    if (ranks.rank() == 0) {
        MoxRead::Model written(folder + "/car.0.mox");
        auto const geometries = geometriesOf(written);
        ASSERT_EQ(geometries.size(), 4U);
        for (std::size_t i = 0; i < 4; ++i) {
            EXPECT_EQ(geometries[i]->name, i % 2 == 0 ? "door" : "hood");
            MoxRead::Variable const* const variable = written.variable(geometries[i]->id, "Value");
            ASSERT_NE(variable, nullptr);
            EXPECT_EQ(written.read(*variable).floats(),
                      (std::vector<float>{static_cast<float>(i / 2)}));
        }
        // The root, two groups, and two shapes with geometries of each rank.
        EXPECT_EQ(written.nodes().size(), 11U);
        std::filesystem::remove_all(folder);
    }
}

TEST(PartitionedModelTest, WhateverARankSaysIsInItsFileAsInAModelOfItsOwn)
{
    FirstRanks const ranks(2);
    if (!ranks.areMine())
        return;
    std::string const folder = ranks.folder();
    PartitionedModel model(ranks.comm(), folder + "/all.moxs", sharing(2));
    writeAllKinds(model);
    model.close();
    if (ranks.rank() != 0)
        return;
    Zyl2::Mox2::Model alone;
    alone.saveTo(folder + "/alone.mox");
    writeAllKinds(alone);
    alone.close();

    MoxRead::Model expected(folder + "/alone.mox");
    MoxRead::Model written(folder + "/all.0.mox");
    ASSERT_EQ(expected.nodes().size(), 6U);
    // Each rank has its own two shapes with their geometries.
    ASSERT_EQ(written.nodes().size(), 10U);
    for (std::uint32_t const group : {1U, 2U})
        expectSameGroup(written.node(group), expected.node(group));
    for (std::uint32_t const shape : {3U, 5U})
        for (std::uint32_t const ofRank : {shape, shape + 4}) {
            SCOPED_TRACE("shape " + std::to_string(ofRank));
            expectSameShape(written.node(ofRank), expected.node(shape));
            expectSameArrays(written, ofRank + 1, expected, shape + 1);
        }
    EXPECT_EQ(expected.node(6).geometry()->variables.size(), 14U);
    std::filesystem::remove_all(folder);
}

TEST(PartitionedModelTest, ASharedGroupHasTheAttributesOfAllItsRanks)
{
    FirstRanks const ranks(2);
    if (!ranks.areMine())
        return;
    std::string const folder = ranks.folder();
    PartitionedModel model(ranks.comm(), folder + "/wave.moxs", sharing(2));
    Attributes attributes;
    attributes.set("of both", "the same");
    attributes.set("of rank " + std::to_string(ranks.rank()), "alone");
    model.addNode(NodeType::RootGroup, "Wave", attributes);
    model.addNode(NodeType::Group, "Parts", attributes);
    model.close();
    if (ranks.rank() != 0)
        return;
    MoxRead::Model const written(folder + "/wave.0.mox");
    ASSERT_EQ(written.nodes().size(), 2U);
    MoxRead::Attributes const all = {
        {"of both", "the same"}, {"of rank 0", "alone"}, {"of rank 1", "alone"}};
    EXPECT_EQ(written.node(1).group()->attributes, all);
    EXPECT_EQ(written.node(2).group()->attributes, all);
    std::filesystem::remove_all(folder);
}

TEST(PartitionedModelTest, ACheckpointIsOfAllFiles)
{
    FirstRanks const ranks(4);
    if (!ranks.areMine())
        return;
    std::string const folder = ranks.folder();
    for (int const recoverable : {0, 1}) {
        PartitionedOptions options = sharing(2);
        options.saver.recoverable = recoverable;
        PartitionedModel model(ranks.comm(), folder + "/wave.moxs", options);
        writePiece(model, Piece(ranks.rank(), 4));
        EXPECT_EQ(model.checkpoint(), recoverable == 1);
        // Without threads there is nobody to wait for, and not all ranks write.
        EXPECT_EQ(model.waitedSeconds(), 0);
        model.close();
    }
    MPI_Barrier(ranks.comm());
    if (ranks.rank() == 0)
        std::filesystem::remove_all(folder);
}

TEST(PartitionedModelTest, WriterNeedsTwoBlocksAndAMessageOfEachSender)
{
    // MOXWRITER_MPI_MEBIBYTES: size of an array; 64 for what large programs do.
    char const* const given = std::getenv("MOXWRITER_MPI_MEBIBYTES");
    std::size_t const arrayBytes = std::stoul(given == nullptr ? "4" : given) << 20U;
    // Gibibytes of noise take their time to be compressed.
    if (given != nullptr)
        alarm(600);
    // One more rank than other tests need makes eight that send.
    int all = 0;
    MPI_Comm_size(MPI_COMM_WORLD, &all);
    FirstRanks const ranks(std::min(all, 9));
    if (!ranks.areMine())
        return;
    std::string const folder = ranks.folder();
    PartitionedOptions options = sharing(9);
    options.messageBytes = std::size_t{1} << 18U;
    options.saver.blockSize = arrayBytes / 4;
    // Values that hardly compress, so that a compressed block is as large as a block.
    std::vector<unsigned int> values;
    if (ranks.rank() != 0) {
        std::mt19937 random(static_cast<unsigned int>(ranks.rank()));
        values.resize(arrayBytes / sizeof(unsigned int));
        std::generate(values.begin(), values.end(), std::ref(random));
    }
    PartitionedModel model(ranks.comm(), folder + "/large.moxs", options);
    model.addNode(NodeType::RootGroup, "Large");
    unsigned int const shape = model.addNode(NodeType::Shape, "Shape");
    auto const peak = [] {
        std::ifstream status("/proc/self/status");
        std::string word;
        std::size_t kibibytes = 0;
        while (status >> word)
            if (word == "VmHWM:")
                status >> kibibytes;
        return kibibytes << 10U;
    };
    model.step();
    std::size_t const before = peak();
    model.addArrayProperty("Random", DatasetType::Result10, values, shape, Step());
    model.step();
    std::size_t const used = peak() - before;
    model.close();
    if (ranks.rank() == 0) {
        // An array lies wholly in one block, which has the size of the array here.
        auto const senders = static_cast<std::size_t>(ranks.size() - 1);
        std::size_t const bound = 2 * arrayBytes + senders * options.messageBytes;
        RecordProperty("bytes", std::to_string(used));
        std::printf("writer: %zu bytes for %zu arrays of %zu bytes, bound %zu\n", used, senders,
                    arrayBytes, bound);
#ifndef SANITIZED
        // Besides, a process takes some for all else. Sanitizers keep memory that was freed.
        EXPECT_LT(used, bound + (std::size_t{1} << 20U));
#endif
        std::filesystem::remove_all(folder);
    }
}
