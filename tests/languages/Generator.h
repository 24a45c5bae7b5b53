#ifndef TESTS_LANGUAGES_GENERATOR_H
#define TESTS_LANGUAGES_GENERATOR_H

#include "integration/Random.h"
#include "languages/Player.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <ostream>
#include <set>
#include <string>
#include <vector>

namespace Languages {

/// Makes sequences of calls, most of them right. It plays each call at once, so that later ones can
/// speak of the nodes that earlier ones have added.
class Generator
{
public:
    /// \param seed     other seeds make other sequences
    /// \param sequences receives them
    Generator(std::uint32_t seed, std::ostream& sequences) : random_(seed), sequences_(sequences) {}

    void makeSequence();

    /// What no sequence had in it yet: calls that end well, calls that fail, kinds of failures.
    std::vector<std::string> missing() const;

private:
    /// What is known of one model.
    struct Slot
    {
        bool lives = false;
        bool isOpen = false;
        bool hasRoot = false;
        /// 0 when it isn't known.
        unsigned int cursor = 0;
        unsigned int last = 1;
        std::vector<unsigned int> groups;
        std::vector<unsigned int> shapes;
        /// The names from the root down to a node.
        std::map<unsigned int, std::vector<std::string>> names;
        std::vector<std::string> files;
    };

    Outcome emit(Line const& line);
    Line callOf(char const* call) const;
    Slot& slot() { return slots_.at(current_); }

    void makeCall();
    void makeModel();
    void save();
    std::string pathToSave();
    void addNode();
    std::int64_t nodeType();
    void noteNode(unsigned int id, bool isShape, std::string const& name);
    void setNodeData();
    void getNodeId();
    void getNodeIdByNames();
    std::vector<std::string> namesToSearch();
    void setCurrentNodeId();
    void moveToParentNode();
    void addComponents();
    std::string componentPath(std::string const& separator);
    void noteComponents(Outcome const& outcome, std::vector<std::string> const& paths,
                        std::string const& separator);
    void addArray();
    void close();
    void destroy();
    void noteClosed();

    void emitOptions();
    void emitAttributes();
    void emitProperties(bool ofGroup);
    void emitProperty(Line& line, bool ofGroup);
    void emitWrongProperty(Line& line);
    void emitSteps();
    void emitArray(std::size_t width);
    std::string elements(std::string const& element, std::size_t count);
    std::uint64_t elementBits(std::string const& element, bool isMisfit);
    void appendAttributes(Line& line);
    void appendAttribute(Line& line);
    /// "given", after such a line, or "default".
    template <typename EmitT>
    std::string givenOrDefault(unsigned int percentGiven, EmitT emit);

    float number();
    std::string name();
    std::string text();
    unsigned int groupOr(unsigned int otherwise);
    unsigned int shapeOr(unsigned int otherwise);
    unsigned int anyId();

    Integration::Random random_;
    std::ostream& sequences_;
    Player player_;
    std::int64_t sequence_ = 0;
    std::size_t current_ = 0;
    std::array<Slot, 3> slots_;
    std::string call_;
    std::set<std::string> ended_;
    std::set<int> statuses_;
};

} // namespace Languages

#endif
