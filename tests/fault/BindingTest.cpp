// What the binding to C does when there is no memory: every function of it, with each allocation
// failing in turn.

#include "fault/Faults.h"

#include "container/TemporaryFile.h"
#include "support/Environment.h"
#include "support/Wanted.h"
#include "support/WritingRecord.h"

#include <moxwriter.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <set>
#include <string>

namespace Fault {

namespace {

/// A program that goes on whatever fails, with the handles that it has.
class Program
{
public:
    explicit Program(std::string const& path) : path_(path) {}

    void run()
    {
        call([this] { return mox_options_create(&options_); });
        call([this] { return mox_attributes_create(&attributes_); });
        call([this] { return mox_properties_create(&properties_); });
        call([this] { return mox_steps_create(&steps_); });
        call([this] { return mox_model_create(&model_); });
        describe();
        build();
        addArrays();
        call([this] { return mox_model_close(model_); });
        saveAnew();
        call([this] { return mox_model_destroy(model_); });
        call([this] { return mox_steps_destroy(steps_); });
        call([this] { return mox_properties_destroy(properties_); });
        call([this] { return mox_attributes_destroy(attributes_); });
        call([this] { return mox_options_destroy(options_); });
    }

    /// How calls ended, without those that ended well.
    std::set<mox_status> const& failures() const { return failures_; }
    mox_status firstFailure() const { return first_; }

private:
    template <typename Action>
    void call(Action action)
    {
        mox_status status = MOX_OK;
        {
            AtWork const atWork;
            status = action();
        }
        if (status == MOX_OK)
            return;
        EXPECT_STRNE(mox_last_error(), "");
        if (failures_.empty())
            first_ = status;
        failures_.insert(status);
    }

    void describe()
    {
        call([this] { return mox_options_set_overwrite(options_, 1); });
        call([this] { return mox_options_set_text1(options_, longText, MOX_TERMINATED); });
        call([this] { return mox_options_set_text2(options_, longText, MOX_TERMINATED); });
        call([this] { return mox_options_set_text3(options_, longText, MOX_TERMINATED); });
        call([this] { return mox_attributes_clear(attributes_); });
        call([this] { return mox_attributes_set_float(attributes_, longText, 30, 1); });
        call([this] { return mox_attributes_set_double(attributes_, longText, 31, 2); });
        call([this] { return mox_attributes_set_int32(attributes_, longText, 32, 3); });
        call([this] { return mox_attributes_set_uint32(attributes_, longText, 33, 4); });
        call([this] { return mox_attributes_set_int64(attributes_, longText, 34, 5); });
        call([this] { return mox_attributes_set_string(attributes_, longText, 35, longText, 40); });
        call([this] { return mox_steps_clear(steps_); });
        call([this] { return mox_steps_add(steps_, longText, 30, attributes_); });
        call([this] { return mox_steps_add(steps_, longText, 31, nullptr); });
    }

    void build()
    {
        call([this] { return mox_model_save_to(model_, path_.data(), path_.size(), options_); });
        call([this] {
            return mox_model_add_node(model_, MOX_ROOT_GROUP, "root", 4, attributes_, nullptr);
        });
        call([this] { return mox_model_add_node(model_, MOX_SHAPE, longText, 30, nullptr, &id_); });
        setProperties();
        call([this] { return mox_model_set_node_data(model_, 1, properties_, attributes_); });
        call([this] {
            return mox_model_get_node_id(model_, "/root/a", MOX_TERMINATED, nullptr, 0, &found_);
        });
        char const* const names[] = {"root", longText};
        call([&] { return mox_model_get_node_id_by_names(model_, names, nullptr, 2, &found_); });
        call([this] { return mox_model_set_current_node_id(model_, 1); });
        call([this] { return mox_model_move_to_parent_node(model_, nullptr); });
        char const* const paths[] = {"/root/a group with a long name/a shape with a long name",
                                     "/root/a group with a long name/"};
        mox_attributes const* const attributes[] = {attributes_, nullptr};
        call([&] {
            return mox_model_add_components(model_, paths, nullptr, 2, nullptr, 0, nullptr);
        });
        call([&] {
            return mox_model_add_component_map(model_, paths, nullptr, attributes, 2, nullptr, 0,
                                               nullptr, nullptr);
        });
    }

    /// Of a group, and some that are refused when they are applied.
    void setProperties()
    {
        static float const floats[] = {0, 0, 1, 2};
        static int32_t const integers[] = {1, 2, 3};
        call([this] { return mox_properties_set_float(properties_, MOX_SHININESS, 1); });
        call([this] { return mox_properties_set_double(properties_, MOX_SHININESS, 1); });
        call([this] { return mox_properties_set_bool(properties_, MOX_SHININESS, 1); });
        call([this] { return mox_properties_set_int32(properties_, MOX_SHININESS, 1); });
        call([this] { return mox_properties_set_int32s(properties_, MOX_SCALE, integers, 3); });
        call([this] { return mox_properties_set_string(properties_, MOX_SCALE, longText, 40); });
        call([this] { return mox_properties_clear(properties_); });
        call([this] { return mox_properties_set_floats(properties_, MOX_ROTATION, floats, 4); });
    }

    void addArrays()
    {
        static double const values[4][3] = {{1, 2, 3}, {4, 5, 6}, {7, 8, 9}, {10, 11, 12}};
        mox_array const array = mox_float64_array(&values[0][0], 4, 3);
        for (char const* const name : {longText, static_cast<char const*>(nullptr)})
            call([&] {
                return mox_model_add_array(model_, name, 30, MOX_DISPLACEMENT, &array, &id_, 1,
                                           steps_, attributes_);
            });
    }

    void saveAnew()
    {
        call([this] { return mox_model_save_to_wide(model_, L"", 0, nullptr); });
    }

    static constexpr char const* longText = "a text that does not fit into a short string";

    std::string path_;
    mox_options* options_ = nullptr;
    mox_attributes* attributes_ = nullptr;
    mox_properties* properties_ = nullptr;
    mox_steps* steps_ = nullptr;
    mox_model* model_ = nullptr;
    uint32_t id_ = 3;
    uint32_t found_ = 0;
    std::set<mox_status> failures_;
    mox_status first_ = MOX_OK;
};

class BindingFaultTest : public testing::TestWithParam<Repeat>
{
protected:
    void SetUp() override
    {
        // The library makes some objects at their first use and keeps them.
        run();
        EXPECT_EQ(run().firstFailure(), MOX_OK);
        whole_ = Support::withoutWritingRecord(path_);
    }

    Program run() const
    {
        std::remove(path_.c_str());
        Program program(path_);
        program.run();
        return program;
    }

    /// \return whether the program got as far as the allocation
    bool failAt(std::size_t ordinal, Repeat repeat) const
    {
        SCOPED_TRACE("allocation " + std::to_string(ordinal));
        long const before = liveAllocations();
        bool hasStruck = false;
        {
            Injection const injection(Place::Allocation, ordinal, repeat);
            auto const program = run();
            hasStruck = injection.hasStruck();
            expectDocumented(program);
        }
        EXPECT_EQ(liveAllocations(), before) << "memory is lost";
        return hasStruck;
    }

private:
    void expectDocumented(Program const& program) const
    {
        EXPECT_EQ(program.failures().count(MOX_UNKNOWN), 0U);
        if (program.firstFailure() == MOX_OK)
            EXPECT_TRUE(Support::withoutWritingRecord(path_) == whole_) << "bytes are lost";
        else
            EXPECT_EQ(program.firstFailure(), MOX_MEMORY);
    }

    Support::DefaultBlockSizeSetting const setting_{"100"};
    Support::TemporaryFolder const folder_;
    std::string const path_ = folder_.File("model.mox");
    std::string whole_;
};

} // namespace

TEST_P(BindingFaultTest, NoAllocationThatFailsGetsOutAsAnythingButAStatus)
{
    std::size_t ordinal = 0;
    while (failAt(ordinal, GetParam()) && !HasFailure())
        ordinal += Support::stride(5);
    EXPECT_GT(ordinal, 300U);
}

INSTANTIATE_TEST_SUITE_P(AllFunctions, BindingFaultTest,
                         testing::Values(Repeat::Once, Repeat::FromThenOn), [](auto const& repeat) {
                             return repeat.param == Repeat::Once ? "Once" : "FromThenOn";
                         });

} // namespace Fault
