#ifndef TESTS_INTEGRATION_CHECKEDMODEL_H
#define TESTS_INTEGRATION_CHECKEDMODEL_H

#include "integration/ExpectedModel.h"

#include <Zyl2/Mox2/Model.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace Integration {

/// A component path as a host writes it, with the attributes of the form that takes a map.
struct ComponentText
{
    std::string path;
    AttributeSet attributes;
};

/// Makes every call, valid or not, of a real model and of the expectation, and checks that both
/// give the same answer or refuse it with the same exception. What is refused is answered with 0,
/// or with no ids.
class CheckedModel
{
public:
    /// \param path where the file is to be; there must be none
    explicit CheckedModel(std::string path) : path_(std::move(path)) {}

    void save();
    unsigned int addNode(Zyl2::Mox2::NodeType type, std::string const& name,
                         AttributeSet const& attributes = AttributeSet());
    void setNodeData(unsigned int id, PropertySet const& properties,
                     AttributeSet const& attributes = AttributeSet());
    std::vector<unsigned int> addComponents(std::vector<std::string> const& paths,
                                            std::string const& separator = "/");
    std::vector<unsigned int> addComponentMap(std::vector<ComponentText> const& components,
                                              std::string const& separator = "/");
    void addArray(ArrayCall const& call);
    unsigned int getNodeId(std::string const& path, std::string const& separator);
    unsigned int getNodeId(std::vector<std::string> const& names);
    unsigned int moveToParentNode();
    void setCurrentNodeId(unsigned int id);

    /// Closes the model; the file, if there is one, has to be sound and as expected.
    void closeAndCompare();

    ExpectedModel const& expected() const { return expected_; }
    std::string const& path() const { return path_; }

private:
    using Answer = std::vector<unsigned int>;
    using Call = std::function<Answer()>;

    /// \return the expected answer; empty for a refusal
    Answer check(char const* what, Call const& real, Call const& expected);
    void requireOpen(char const* text) const;

    std::string path_;
    bool isOpen_ = false;
    bool hasFile_ = false;
    Zyl2::Mox2::Model model_;
    ExpectedModel expected_;
};

} // namespace Integration

#endif
