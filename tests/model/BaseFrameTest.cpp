#include "Zyl2/Base/Database.h"
#include "Zyl2/Base/Extractor.h"
#include "Zyl2/Base/File.h"
#include "Zyl2/Base/Modifier.h"
#include "Zyl2/Base/Saver.h"
#include "Zyl2/Mox2/Adder/Node.h"
#include "Zyl2/Mox2/Extractor/NodeId.h"
#include "Zyl2/Mox2/Modifier/CurrentNodeId.h"
#include "Zyl2/Mox2/Modifier/NodeData.h"
#include "Zyl2/Mox2/Saver.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <vector>

namespace {

using Zyl2::Base::File;

/// What commands of the frame run against here; the frame itself must not touch it.
struct Counter
{
    int value = 5;
};

class Increment : public Zyl2::Base::Modifier<Counter>
{
public:
    void update(Counter& counter) override { ++counter.value; }
};

class Read : public Zyl2::Base::Extractor<Counter, int>
{
public:
    int extractFrom(Counter const& counter) override { return counter.value; }
};

/// Shows what a saver keeps.
class OpenSaver : public Zyl2::Base::Saver<Counter, std::string>
{
public:
    using Saver::getFile;
    using Saver::getOptions;
    using Saver::Saver;
};

File makeFile()
{
    File file;
    file.path = "narrow";
    file.widePath = L"wide";
    file.formatName = "format";
    file.extraNames = {"one", "two"};
    file.flags = 7;
    return file;
}

TEST(BaseDatabase, ClosingDoesNothing)
{
    Zyl2::Base::Database database;
    EXPECT_NO_THROW(database.close());
    EXPECT_NO_THROW(database.close());
    EXPECT_TRUE(std::has_virtual_destructor<Zyl2::Base::Database>::value);
}

TEST(BaseModifier, UpdatingDoesNothing)
{
    Counter counter;
    Zyl2::Base::Modifier<Counter>().update(counter);
    EXPECT_EQ(counter.value, 5);
    EXPECT_TRUE(std::has_virtual_destructor<Zyl2::Base::Modifier<Counter>>::value);
}

TEST(BaseModifier, UpdatesThroughTheBaseWhatTheCommandUpdates)
{
    Counter counter;
    Increment increment;
    Zyl2::Base::Modifier<Counter>& command = increment;
    command.update(counter);
    EXPECT_EQ(counter.value, 6);
}

TEST(BaseExtractor, GivesAValueInitialisedResult)
{
    Counter const counter;
    EXPECT_EQ((Zyl2::Base::Extractor<Counter, unsigned int>().extractFrom(counter)), 0U);
    EXPECT_EQ((Zyl2::Base::Extractor<Counter, void*>().extractFrom(counter)), nullptr);
    EXPECT_EQ((Zyl2::Base::Extractor<Counter, std::string>().extractFrom(counter)), "");
    EXPECT_NO_THROW((Zyl2::Base::Extractor<Counter, void>().extractFrom(counter)));
    EXPECT_TRUE((std::has_virtual_destructor<Zyl2::Base::Extractor<Counter, void>>::value));
}

TEST(BaseExtractor, ExtractsThroughTheBaseWhatTheCommandExtracts)
{
    Counter const counter;
    Read read;
    Zyl2::Base::Extractor<Counter, int>& command = read;
    EXPECT_EQ(command.extractFrom(counter), 5);
}

TEST(BaseSaver, KeepsACopyOfEveryFieldOfTheFileAndOfTheOptions)
{
    File file = makeFile();
    std::string options = "options";
    OpenSaver const saver(file, options);
    file = File();
    options.clear();
    EXPECT_EQ(saver.getFile().path, "narrow");
    EXPECT_EQ(saver.getFile().widePath, L"wide");
    EXPECT_EQ(saver.getFile().formatName, "format");
    EXPECT_EQ(saver.getFile().extraNames, (std::vector<std::string>{"one", "two"}));
    EXPECT_EQ(saver.getFile().flags, 7U);
    EXPECT_EQ(saver.getOptions(), "options");
}

TEST(BaseSaver, ExtractingDoesNothing)
{
    Counter counter;
    OpenSaver saver(makeFile(), "options");
    saver.extractFrom(counter);
    EXPECT_EQ(counter.value, 5);
    OpenSaver const& constant = saver;
    EXPECT_NO_THROW(constant.extractFrom(Zyl2::Base::Database()));
}

TEST(BaseFile, ANewOneNamesNoFile)
{
    File const file;
    EXPECT_EQ(file.path, "");
    EXPECT_EQ(file.widePath, L"");
    EXPECT_EQ(file.formatName, "");
    EXPECT_TRUE(file.extraNames.empty());
    EXPECT_EQ(file.flags, 0U);
}

TEST(CommandFrame, EveryCommandStandsOnItsBase)
{
    using namespace Zyl2::Mox2;
    using Asking = Zyl2::Base::Extractor<Database, unsigned int>;
    using Modifying = Zyl2::Base::Modifier<Database>;
    using Saving = Zyl2::Base::Saver<Database, SaverOptions>;
    EXPECT_TRUE((std::is_base_of<Zyl2::Base::Database, Database>::value));
    EXPECT_TRUE((std::is_base_of<Zyl2::Base::Extractor<Database, void>, Saving>::value));
    EXPECT_TRUE((std::is_base_of<Saving, Saver>::value));
    EXPECT_TRUE((std::is_base_of<Asking, Extractor::NodeId>::value));
    EXPECT_TRUE((std::is_base_of<Modifying, Modifier::CurrentNodeId>::value));
    EXPECT_TRUE((std::is_base_of<Modifying, Modifier::NodeData>::value));
    EXPECT_TRUE((std::is_base_of<Modifying, Adder::Node>::value));
}

TEST(CommandFrame, TheModelSaversInheritedOperationsDoNothing)
{
    using namespace Zyl2::Mox2;
    Database database;
    Saver saver{File(), SaverOptions()};
    Zyl2::Base::Extractor<Database, void>& extractor = saver;
    extractor.extractFrom(database);
    EXPECT_EQ(database.tree, nullptr);
    Zyl2::Base::Database const other;
    saver.extractFrom(other);
    EXPECT_EQ(database.tree, nullptr);
    saver.extractFrom(database);
    EXPECT_NE(database.tree, nullptr);
}

} // namespace
