#ifndef TESTS_READ_ENSIGHT_ENSIGHTSAMPLE_H
#define TESTS_READ_ENSIGHT_ENSIGHTSAMPLE_H

#include "EnSightEncoder.h"

#include "support/Folder.h"

#include <filesystem>
#include <map>
#include <string>
#include <vector>

/// A case of EnSight of two steps: a part of three elements with node and element ids, then a
/// structured part and one of polygons, or, before Gold, one of a triangle.
class EnSightSample
{
public:
    using Format = EnSightEncoder::Format;

    EnSightSample(Format format, bool isGold) : format_(format), isGold_(isGold)
    {
        files_.emplace("mesh", mesh());
        files_.emplace("T0", scalars(10));
        files_.emplace("T1", scalars(20));
        files_.emplace("V", vectors());
        files_.emplace("E", elementScalars());
        files_.emplace("S", tensors());
    }

    std::map<std::string, EnSightEncoder> const& files() const { return files_; }

    /// \return the case's file
    std::filesystem::path writeTo(Support::Folder const& folder) const
    {
        for (auto const& [name, file] : files_)
            folder.write(name, file.content());
        return folder.write(
            "in.case", caseOf("", "1 T T*", "filename start number: 0\nfilename increment: 1\n"));
    }

    /// The same with both steps in each file.
    std::filesystem::path writeSeriesTo(Support::Folder const& folder) const
    {
        for (auto const& [name, file] : seriesFiles())
            folder.write(name, file.content());
        return folder.write("in.case", caseOf("1 1 ", "1 1 T T", "") +
                                           "FILE\nfile set: 1\nnumber of steps: 2\n");
    }

    std::map<std::string, EnSightEncoder> seriesFiles() const
    {
        std::map<std::string, EnSightEncoder> files = {
            {"T", series(files_.at("T0"), files_.at("T1"))}};
        for (char const* const name : {"mesh", "V", "E", "S"})
            files.emplace(name, series(files_.at(name), files_.at(name)));
        return files;
    }

    /// Of as many nodes or elements as there are in a part, each component in a list of its own.
    static std::vector<float> component(float first, std::size_t count)
    {
        std::vector<float> values;
        for (std::size_t i = 0; i < count; ++i)
            values.push_back(first + 1.25F * static_cast<float>(i));
        return values;
    }

    static constexpr std::size_t solidNodes = 12;
    static constexpr std::size_t gridNodes = 4;
    static constexpr std::size_t plateNodes = 5;

private:
    using Reals = std::vector<float>;

    /// Of those formats, VTK does not read scalars on nodes.
    std::size_t componentsOfT() const { return isGold_ || format_ == Format::Text ? 1 : 3; }

    /// \param sets the numbers of the time set and of the file set
    std::string caseOf(std::string const& sets, std::string const& fileOfT,
                       std::string const& numbering) const
    {
        return std::string("FORMAT\ntype: ") + (isGold_ ? "ensight gold" : "ensight") +
               "\nGEOMETRY\nmodel: " + sets + "mesh\nVARIABLE\n" +
               (componentsOfT() == 1 ? "scalar" : "vector") + " per node: " + fileOfT +
               "\nvector per node: " + sets + "V V\nscalar per element: " + sets +
               "E E\ntensor symm per element: " + sets +
               "S S\nTIME\ntime set: 1\nnumber of steps: 2\n" + numbering +
               "time values: 0.5\n1.5\n";
    }

    EnSightEncoder series(EnSightEncoder const& first, EnSightEncoder const& second) const
    {
        EnSightEncoder file(format_, isGold_);
        std::size_t const skipped = first.formatLength();
        file.append(first.content().substr(0, skipped));
        for (EnSightEncoder const* const step : {&first, &second}) {
            file.line("BEGIN TIME STEP");
            file.append(step->content().substr(skipped));
            file.line("END TIME STEP");
        }
        return file;
    }

    EnSightEncoder mesh() const
    {
        EnSightEncoder file(format_, isGold_);
        file.format();
        file.line("made by a test");
        file.line("of three parts");
        file.line(hasNodeIds(file) ? "node id given" : "node id off");
        file.line("element id given");
        if (!isGold_)
            addSharedNodes(file);
        addSolid(file);
        if (isGold_) {
            addGrid(file);
            addPlate(file);
        } else {
            addTriangle(file);
        }
        return file;
    }

    static std::vector<Reals> pointsOfSolid()
    {
        return {{0, 0, 0}, {1, 0, 0}, {1, 1, 0},     {0, 1, 0},   {0, 0, 1},   {1, 0, 1},
                {1, 1, 1}, {0, 1, 1}, {.5F, .5F, 2}, {1, .5F, 2}, {.5F, 1, 2}, {.5F, .5F, 3}};
    }

    static void addSharedNodes(EnSightEncoder& file)
    {
        file.line("coordinates");
        file.integers({solidNodes}, 1);
        if (hasNodeIds(file)) {
            file.rowsWithIds(idsOfNodes(), pointsOfSolid());
            return;
        }
        Reals all;
        for (Reals const& point : pointsOfSolid())
            all.insert(all.end(), point.begin(), point.end());
        file.reals(all);
    }

    /// VTK misunderstands those of binary files before Gold.
    static bool hasNodeIds(EnSightEncoder const& file) { return file.isGold() || file.isText(); }

    /// Before Gold, elements name nodes by their ids.
    static int nameOfNode(EnSightEncoder const& file, int node)
    {
        return file.isGold() || !hasNodeIds(file) ? node : node + 10;
    }

    static std::vector<int> idsOfNodes()
    {
        return {11, 12, 13, 14, 15, 16, 17, 18, 19, 20, 21, 22};
    }

    static void addSolid(EnSightEncoder& file)
    {
        file.part(1);
        file.line("Solid");
        if (file.isGold())
            addNodesOfSolid(file);
        addElement(file, "hexa8", 101, {1, 2, 3, 4, 5, 6, 7, 8});
        addElement(file, "pyramid5", 102, {5, 6, 7, 8, 9});
        addElement(file, "tetra4", 103, {9, 10, 11, 12});
    }

    static void addNodesOfSolid(EnSightEncoder& file)
    {
        file.line("coordinates");
        file.integers({solidNodes}, 1);
        file.integers(idsOfNodes(), 1);
        for (std::size_t axis = 0; axis < 3; ++axis) {
            Reals values;
            for (Reals const& point : pointsOfSolid())
                values.push_back(point[axis]);
            file.reals(values);
        }
    }

    static void addElement(EnSightEncoder& file, std::string const& type, int id,
                           std::vector<int> nodes)
    {
        for (int& node : nodes)
            node = nameOfNode(file, node);
        file.line(type);
        file.integers({1}, 1);
        if (file.isGold() || !file.isText())
            file.integers({id}, 1);
        else
            nodes.insert(nodes.begin(), id);
        file.integers(nodes, nodes.size());
    }

    static void addGrid(EnSightEncoder& file)
    {
        file.part(2);
        file.line("Grid");
        file.line("block");
        file.integers({2, 2, 1}, 3);
        file.reals({0, 1, 0, 1});
        file.reals({0, 0, 1, 1});
        file.reals({5, 5, 5, 5});
    }

    static void addTriangle(EnSightEncoder& file)
    {
        file.part(2);
        file.line("Triangle");
        addElement(file, "tria3", 201, {1, 2, 9});
    }

    static void addPlate(EnSightEncoder& file)
    {
        file.part(3);
        file.line("Plate");
        file.line("coordinates");
        file.integers({plateNodes}, 1);
        file.integers({21, 22, 23, 24, 25}, 1);
        file.reals({0, 1, 2, 1, 0});
        file.reals({0, 0, 1, 2, 1});
        file.reals({9, 9, 9, 9, 9});
        file.line("nsided");
        file.integers({2}, 1);
        file.integers({201, 202}, 1);
        file.integers({3, 4}, 1);
        if (file.isText()) {
            file.integers({1, 2, 3}, 3);
            file.integers({1, 3, 4, 5}, 4);
        } else {
            file.integers({1, 2, 3, 1, 3, 4, 5}, 7);
        }
    }

    EnSightEncoder scalars(float first) const
    {
        EnSightEncoder file(format_, isGold_);
        file.line("T");
        addNodal(file, componentsOfT(), first);
        return file;
    }

    EnSightEncoder vectors() const
    {
        EnSightEncoder file(format_, isGold_);
        file.line("V");
        addNodal(file, 3, 30);
        return file;
    }

    static void addNodal(EnSightEncoder& file, std::size_t components, float first)
    {
        if (!file.isGold()) {
            file.reals(interleaved(solidNodes, components, first));
            return;
        }
        file.part(1);
        file.line("coordinates");
        addByComponent(file, solidNodes, components, first);
        file.part(2);
        file.line("block");
        addByComponent(file, gridNodes, components, first);
        file.part(3);
        file.line("coordinates");
        addByComponent(file, plateNodes, components, first);
    }

    EnSightEncoder elementScalars() const
    {
        EnSightEncoder file(format_, isGold_);
        file.line("E");
        addElements(file, 1);
        if (isGold_) {
            file.part(2);
            file.line("block");
            file.reals({70});
        }
        addLastElements(file, 1);
        return file;
    }

    EnSightEncoder tensors() const
    {
        constexpr std::size_t components = 6;
        EnSightEncoder file(format_, isGold_);
        file.line("S");
        addElements(file, components);
        addLastElements(file, components);
        return file;
    }

    static void addElements(EnSightEncoder& file, std::size_t components)
    {
        file.part(1);
        for (char const* const type : {"hexa8", "pyramid5", "tetra4"}) {
            file.line(type);
            addValues(file, 1, components, 50);
        }
    }

    static void addLastElements(EnSightEncoder& file, std::size_t components)
    {
        file.part(file.isGold() ? 3 : 2);
        file.line(file.isGold() ? "nsided" : "tria3");
        addValues(file, file.isGold() ? 2 : 1, components, 90);
    }

    static void addValues(EnSightEncoder& file, std::size_t count, std::size_t components,
                          float first)
    {
        if (file.isGold())
            addByComponent(file, count, components, first);
        else
            file.reals(interleaved(count, components, first));
    }

    static void addByComponent(EnSightEncoder& file, std::size_t count, std::size_t components,
                               float first)
    {
        for (std::size_t i = 0; i < components; ++i)
            file.reals(component(first + 100 * static_cast<float>(i), count));
    }

    static Reals interleaved(std::size_t count, std::size_t components, float first)
    {
        Reals values(count * components);
        for (std::size_t i = 0; i < components; ++i) {
            Reals const ofOne = component(first + 100 * static_cast<float>(i), count);
            for (std::size_t row = 0; row < count; ++row)
                values[row * components + i] = ofOne[row];
        }
        return values;
    }

    Format format_;
    bool isGold_;
    std::map<std::string, EnSightEncoder> files_;
};

#endif
