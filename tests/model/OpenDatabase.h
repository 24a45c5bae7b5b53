#ifndef TESTS_MODEL_OPENDATABASE_H
#define TESTS_MODEL_OPENDATABASE_H

#include "Zyl2/Mox/Geometry.h"
#include "Zyl2/Mox/Group.h"
#include "Zyl2/Mox/Shape.h"
#include "Zyl2/Mox2/Adder/Node.h"
#include "Zyl2/Mox2/Database.h"
#include "Zyl2/Mox2/Saver.h"

#include <string>

namespace ModelTests {

/// A database that is open for writing, with no file behind it.
class OpenDatabase
{
public:
    OpenDatabase()
    {
        Zyl2::Mox2::Saver(Zyl2::Base::File(), Zyl2::Mox2::SaverOptions()).extractFrom(database);
    }

    Zyl2Mox::Tree& tree() { return *database.tree; }

    unsigned int add(Zyl2::Mox2::NodeType type, std::string const& name,
                     Zyl2::Mox2::Attributes const& attributes = Zyl2::Mox2::Attributes())
    {
        Zyl2::Mox2::Adder::Node adder(type, name, attributes);
        adder.update(database);
        return adder.getId();
    }

    /// Adds a shape below the root, whatever is current.
    unsigned int addShapeBelowRoot(std::string const& name)
    {
        tree().SetCurrentId(1);
        return add(Zyl2::Mox2::NodeType::Shape, name);
    }

    /// The node of the id as a kind; null when it is another.
    template <typename Kind>
    Kind* node(unsigned int id)
    {
        return dynamic_cast<Kind*>(tree().GetReqNode(id).value);
    }

    Zyl2::Mox2::Database database;
};

} // namespace ModelTests

#endif
