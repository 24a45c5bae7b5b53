#ifndef TESTS_SUPPORT_MODELFILE_H
#define TESTS_SUPPORT_MODELFILE_H

#include <moxread/Model.h>
#include <moxread/Verify.h>

#include <cstdint>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

namespace Support {

/// A model file as the reader under tools/moxread sees it, which shares no code with the writer.
class ModelFile
{
public:
    using Path = std::vector<std::string>;

    /// Raises an exception when the file isn't sound down to the last byte.
    explicit ModelFile(std::filesystem::path const& path) : model_(verified(path)) {}

    MoxRead::Model& model() { return model_; }

    MoxRead::Attributes const& rootAttributes() const { return model_.node(1).group()->attributes; }

    /// Names of the shapes in the order of the tree, with the groups they are in:
    /// "Root/Group/Shape".
    std::vector<std::string> shapes() const
    {
        std::vector<std::string> names;
        for (MoxRead::Node const& node : model_.nodes())
            if (node.shape() != nullptr)
                names.push_back(pathOf(node));
        return names;
    }

    /// Null when the shape hasn't the dataset. The path begins below the root.
    MoxRead::Variable const* find(Path const& shape, std::string const& dataset,
                                  std::string const& step = "") const
    {
        return model_.variable(geometryOf(shape).id,
                               step.empty() ? dataset : dataset + '\x1E' + step);
    }

    MoxRead::Variable const& get(Path const& shape, std::string const& dataset,
                                 std::string const& step = "") const
    {
        MoxRead::Variable const* const variable = find(shape, dataset, step);
        if (variable == nullptr)
            throw std::runtime_error("no dataset " + dataset + " of step " + step);
        return *variable;
    }

    std::vector<float> floats(Path const& shape, std::string const& dataset,
                              std::string const& step = "")
    {
        MoxRead::Variable const& variable = get(shape, dataset, step);
        if (variable.elementType() != MoxRead::ElementType::Float)
            throw std::runtime_error(dataset + " doesn't hold floats");
        return model_.read(variable).floats();
    }

    std::vector<std::uint32_t> numbers(Path const& shape, std::string const& dataset,
                                       std::string const& step = "")
    {
        MoxRead::Variable const& variable = get(shape, dataset, step);
        if (variable.elementType() != MoxRead::ElementType::Uint32)
            throw std::runtime_error(dataset + " doesn't hold unsigned integers");
        return model_.read(variable).words;
    }

    /// Names of the datasets of a shape, the step's behind a bar, in the order of the file.
    std::vector<std::string> datasets(Path const& shape) const
    {
        std::vector<std::string> names;
        for (MoxRead::Variable const& variable : geometryOf(shape).geometry()->variables)
            names.push_back(variable.hasStep() ? variable.datasetName() + "|" + variable.stepName()
                                               : variable.datasetName());
        return names;
    }

    template <typename T>
    static T attribute(MoxRead::Attributes const& attributes, std::string const& name)
    {
        auto const found = attributes.find(name);
        if (found == attributes.end())
            throw std::runtime_error("no attribute " + name);
        return std::get<T>(found->second);
    }

private:
    static std::string verified(std::filesystem::path const& path)
    {
        MoxRead::verify(path.string());
        return path.string();
    }

    MoxRead::Node const& geometryOf(Path const& shape) const
    {
        Path path = {model_.node(1).name};
        path.insert(path.end(), shape.begin(), shape.end());
        path.push_back(shape.back());
        MoxRead::Node const* const geometry = model_.find(path);
        if (geometry == nullptr || geometry->geometry() == nullptr)
            throw std::runtime_error("no shape " + shape.back());
        return *geometry;
    }

    std::string pathOf(MoxRead::Node const& node) const
    {
        return node.parent == 0 ? node.name : pathOf(model_.node(node.parent)) + "/" + node.name;
    }

    MoxRead::Model model_;
};

} // namespace Support

#endif
