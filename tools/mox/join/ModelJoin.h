#ifndef MOX_JOIN_MODELJOIN_H
#define MOX_JOIN_MODELJOIN_H

#include "JoinedShape.h"

#include "moxread/Model.h"

#include <Zyl2/Mox2/Model.h>

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace Mox::Join {

/// Writes a partitioned model as one, with one shape where ranks had pieces of one.
class ModelJoin
{
public:
    /// \param tell called with the number of shapes that are written, and of all
    ModelJoin(MoxRead::Model& from, Zyl2::Mox2::Model& to, Options const& options,
              std::function<void(std::size_t done, std::size_t all)> tell);

    void run();

    std::size_t shapes() const { return shapes_; }

private:
    /// The nodes below one, as far as they are written.
    struct Level
    {
        /// Groups, and the first shape of each name.
        std::vector<MoxRead::Node const*> children;
        std::map<std::string, std::vector<MoxRead::Node const*>> pieces;
        std::size_t next = 0;
        /// The node in the model that is written.
        unsigned int to = 0;
    };

    void addChildren();
    Level levelOf(std::uint32_t parent, unsigned int to) const;
    unsigned int addGroup(MoxRead::Node const& node, unsigned int parent);
    void addShape(std::vector<MoxRead::Node const*> const& pieces, unsigned int parent);
    unsigned int addShapeNode(MoxRead::Node const& node, unsigned int parent);
    void setMaterial(MoxRead::Node const& node, unsigned int id);

    MoxRead::Model& from_;
    Zyl2::Mox2::Model& to_;
    Options const& options_;
    std::function<void(std::size_t, std::size_t)> tell_;
    std::size_t done_ = 0;
    std::size_t all_ = 0;
    std::size_t shapes_ = 0;
};

} // namespace Mox::Join

#endif
