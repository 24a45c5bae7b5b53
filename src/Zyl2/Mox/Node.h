#ifndef ZYL2_MOX_NODE_H
#define ZYL2_MOX_NODE_H

#include <cstdint>
#include <string>

namespace Zyl2Wvf {
class Block;
}

namespace Zyl2Mox {

/// A named object of the scene tree. Bare, it serves as a probe that carries only a name.
class Node
{
public:
    explicit Node(std::string const& name);
    Node(Node const&) = default;
    Node& operator=(Node const&) = default;

    virtual ~Node();

    /// Kind of the node, as it stands in the file.
    virtual std::string GetType() const;
    /// Version of the kind's layout, as it stands in the file.
    virtual std::string GetVersion() const;
    virtual bool IsLoaded() const;
    // The next four have no effect in any kind of node: this library writes trees as a whole.

    virtual void Load(std::string const& path);
    virtual void Save();
    virtual void CopyToBlock(Zyl2Wvf::Block& block) const;
    virtual void CopyFromBlock(Zyl2Wvf::Block const& block);

    std::string const& GetName() const { return name_; }

private:
    std::string name_;
    bool loaded_ = false;
};

} // namespace Zyl2Mox

#endif
