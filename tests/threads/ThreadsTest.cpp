#include "threads/NumberedModel.h"

#include "container/LogCapture.h"
#include "container/TemporaryFile.h"
#include "moxread/Container.h"
#include "moxread/Model.h"
#include "support/Environment.h"
#include "support/Wanted.h"
#include "support/WritingRecord.h"

#include <gtest/gtest.h>

#include <exception>
#include <future>
#include <map>
#include <memory>
#include <mutex>
#include <thread>

namespace Threads {

namespace {

using Support::withoutWritingRecord;

constexpr unsigned int modelCount = Support::isSanitized ? 4 : 8;

using Models = std::vector<std::unique_ptr<NumberedModel>>;

/// Runs the step for all numbers at the same time, each in a thread of its own.
void runAtOnce(unsigned int count, std::function<void(unsigned int)> const& step)
{
    std::promise<void> allStarted;
    std::shared_future<void> const start = allStarted.get_future().share();
    std::vector<std::future<void>> running;
    for (unsigned int number = 0; number < count; ++number)
        running.push_back(std::async(std::launch::async, [start, &step, number] {
            start.wait();
            step(number);
        }));
    allStarted.set_value();
    for (std::future<void>& thread : running)
        thread.get();
}

/// Runs the step in another thread and waits until it has ended.
void runElsewhere(std::function<void()> const& step)
{
    std::async(std::launch::async, step).get();
}

/// Place in the library that each record comes from, by the thread that made it.
class PlacesByThread : public Zyl2::Log::LogSystem
{
public:
    using LogSystem::operator+=;

    void operator+=(std::ostream const& text) override
    {
        auto const& record = dynamic_cast<Zyl2::Log::Record<char> const&>(text);
        std::lock_guard<std::mutex> const lock(mutex_);
        places_[std::this_thread::get_id()].push_back(place(record.file, record.line));
    }

    static std::string place(std::string const& file, unsigned long line)
    {
        return file + ':' + std::to_string(line);
    }

    std::vector<std::string> const& of(std::thread::id thread) const { return places_.at(thread); }

private:
    std::mutex mutex_;
    std::map<std::thread::id, std::vector<std::string>> places_;
};

class ThreadsTest : public testing::Test
{
protected:
    Models models(std::string const& name) const
    {
        Models result;
        for (unsigned int number = 1; number <= modelCount; ++number)
            result.push_back(std::make_unique<NumberedModel>(
                number, folder.File(name + std::to_string(number) + ".mox")));
        return result;
    }

    /// The models as one thread writes them, one after the other.
    Models writtenInOneThread() const
    {
        Models result = models("alone");
        for (auto const& model : result)
            model->write();
        return result;
    }

    static void expectSame(NumberedModel const& model, NumberedModel const& expected)
    {
        SCOPED_TRACE(model.signature());
        EXPECT_TRUE(withoutWritingRecord(model.path()) == withoutWritingRecord(expected.path()));
        MoxRead::Model const file(model.path());
        EXPECT_EQ(file.globalInformation().writings.at(0).text1, model.signature());
        EXPECT_EQ(model.failures(), expected.failures());
    }

    static void expectSame(Models const& given, Models const& expected)
    {
        for (unsigned int index = 0; index < modelCount; ++index)
            expectSame(*given[index], *expected[index]);
    }

    // Of the size of two or three datasets, so that most blocks are saved long before the end.
    Support::DefaultBlockSizeSetting const blockSize{"1000"};
    Support::TemporaryFolder folder;
};

} // namespace

TEST_F(ThreadsTest, ModelsWrittenAtTheSameTimeAreThoseWrittenOneAfterTheOther)
{
    Models const together = models("together");
    runAtOnce(modelCount, [&](unsigned int index) { together[index]->write(); });
    expectSame(together, writtenInOneThread());
}

TEST_F(ThreadsTest, TheModelsDifferAndConsistOfManyBlocks)
{
    Models const alone = writtenInOneThread();
    for (unsigned int index = 0; index < modelCount; ++index) {
        EXPECT_GT(MoxRead::Container(alone[index]->path()).blockCount(), 40U);
        EXPECT_EQ(alone[index]->failures().size(), 6U);
        for (std::string const& failure : alone[index]->failures())
            EXPECT_NE(failure, "none");
        for (unsigned int other = 0; other < index; ++other)
            EXPECT_FALSE(withoutWritingRecord(alone[index]->path()) ==
                         withoutWritingRecord(alone[other]->path()));
    }
}

TEST_F(ThreadsTest, AModelMayGoFromThreadToThread)
{
    Models const wandering = models("wandering");
    for (auto const& model : wandering)
        for (std::function<void()> const& step : model->lifeSteps())
            runElsewhere(step);
    expectSame(wandering, writtenInOneThread());
}

TEST_F(ThreadsTest, SeveralModelsMayTakeTheSameValues)
{
    using namespace Zyl2::Mox2;
    Array2d<float> const values(2, 3, {0, 1, 2, 3, 4, 5});
    Attributes attributes;
    attributes.set("Unit", "a text that is too long to be held without memory of its own");
    NodeProperties properties;
    properties.set(PropertyType::Translation, std::vector<float>{1, 2, 3});
    StepList steps(2);
    steps.set(1, Step("second", attributes));
    auto const write = [&](std::string const& path) {
        Model model;
        model.saveTo(path);
        unsigned int const root = model.addNode(NodeType::RootGroup, "root", attributes);
        Array1d<unsigned int> const shape{model.addNode(NodeType::Shape, "shape")};
        model.setNodeData(root, properties, attributes);
        for (unsigned int count = 0; count < 20; ++count)
            model.addArrayProperty(DatasetType::Coordinates, values, shape, steps, attributes);
        model.close();
    };
    auto const path = [&](unsigned int index) { return folder.File(std::to_string(index)); };
    runAtOnce(modelCount, [&](unsigned int index) { write(path(index)); });
    write(path(modelCount));
    for (unsigned int index = 0; index < modelCount; ++index)
        EXPECT_TRUE(withoutWritingRecord(path(index)) == withoutWritingRecord(path(modelCount)));
}

TEST_F(ThreadsTest, ALogSystemGetsEveryThreadsRecordsInTheirOrder)
{
    Models const together = models("together");
    std::vector<std::thread::id> threads(modelCount);
    PlacesByThread log;
    Zyl2::Log::LogSystem* const previous = Zyl2::Log::setActiveLogSystem(&log);
    runAtOnce(modelCount, [&](unsigned int index) {
        threads[index] = std::this_thread::get_id();
        together[index]->write();
    });
    Zyl2::Log::setActiveLogSystem(previous);

    Models const alone = models("alone");
    for (unsigned int index = 0; index < modelCount; ++index) {
        Support::LogCapture capture;
        alone[index]->write();
        std::vector<std::string> places;
        for (Support::LogCapture::Entry const& entry : capture.entries)
            places.push_back(PlacesByThread::place(entry.file, entry.line));
        EXPECT_GT(places.size(), 100U);
        EXPECT_EQ(log.of(threads[index]), places);
    }
}

} // namespace Threads
