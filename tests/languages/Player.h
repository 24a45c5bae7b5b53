#ifndef TESTS_LANGUAGES_PLAYER_H
#define TESTS_LANGUAGES_PLAYER_H

#include "languages/Words.h"

#include <Zyl2/Mox2/Model.h>

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace Languages {

/// How a call ended.
struct Outcome
{
    int status = 0;
    /// None for a call that failed.
    std::vector<unsigned int> values;
    /// Empty unless the call failed.
    std::string sentence;
};

/// Plays sequences of calls on the facade, line by line.
class Player
{
public:
    /// \return how the call ended, if the line is a call
    std::optional<Outcome> take(std::string const& line);

    /// What the log says of the call that was taken last.
    std::string logged(Outcome const& outcome) const;

private:
    using Model = Zyl2::Mox2::Model;

    struct Array
    {
        Zyl2::Mox2::ArrayView::Element element = Zyl2::Mox2::ArrayView::Element::Float32;
        std::size_t rows = 0;
        std::size_t columns = 1;
        std::ptrdiff_t rowStride = 0;
        std::ptrdiff_t columnStride = 0;
        std::size_t offset = 0;
        std::string bytes;
    };

    void prepare(std::string const& what, Words& words);
    void beginSequence(Words& words);
    void readOptions(Words& words);
    void readProperties(Words& words);
    void readSteps(Words& words);
    void readArray(Words& words);

    Outcome call(Words& words);
    std::vector<unsigned int> run(Words& words);
    std::vector<unsigned int> save(Words& words);
    std::vector<unsigned int> saveWide(Words& words);
    std::vector<unsigned int> addNode(Words& words);
    std::vector<unsigned int> setNodeData(Words& words);
    std::vector<unsigned int> getNodeId(Words& words);
    std::vector<unsigned int> addComponents(Words& words);
    std::vector<unsigned int> addComponentMap(Words& words);
    std::vector<unsigned int> addArray(Words& words);
    std::vector<unsigned int> destroy();

    Model& model() { return models_.at(model_).value(); }
    Zyl2::Mox2::Attributes const& attributes(Words& words) const;
    Zyl2::Mox2::SaverOptions options(Words& words) const;
    Zyl2::Mox2::StepList steps(Words& words) const;
    Zyl2::Mox2::ArrayView view() const;

    std::int64_t sequence_ = 0;
    std::int64_t calls_ = 0;
    std::size_t model_ = 0;
    std::string call_;
    std::array<std::optional<Model>, 3> models_;

    Zyl2::Mox2::SaverOptions options_;
    Zyl2::Mox2::Attributes attributes_;
    Zyl2::Mox2::NodeProperties properties_;
    std::vector<Zyl2::Mox2::Step> steps_;
    Array array_;
};

} // namespace Languages

#endif
