#include <gtest/gtest.h>

#include <mpi.h>

#include <algorithm>

#include <unistd.h>

#ifdef SANITIZED
#include <sanitizer/lsan_interface.h>
#endif

namespace {

constexpr unsigned int SecondsToHang = 60;

/// A rank that waits for ever ends all of them.
class Watchdog : public testing::EmptyTestEventListener
{
    void OnTestStart(testing::TestInfo const& /*test*/) override { alarm(SecondsToHang); }
    /// A rank that has nothing to do in a test waits behind it for those that have.
    void OnTestEnd(testing::TestInfo const& /*test*/) override { alarm(0); }
};

/// Of ranks that all say the same, one is enough; what is wrong is told by each.
void silenceOtherRanks()
{
    int rank = 0;
    MPI_Comm_rank(MPI_COMM_WORLD, &rank);
    if (rank == 0)
        return;
    testing::TestEventListeners& listeners = testing::UnitTest::GetInstance()->listeners();
    class Failures : public testing::EmptyTestEventListener
    {
        void OnTestPartResult(testing::TestPartResult const& result) override
        {
            if (result.failed())
                std::fprintf(stderr, "%s:%d: %s\n", result.file_name(), result.line_number(),
                             result.message());
        }
    };
    delete listeners.Release(listeners.default_result_printer());
    listeners.Append(new Failures);
}

/// What it keeps until the process ends is no leak.
void beginMpi(int& argc, char**& argv)
{
#ifdef SANITIZED
    __lsan::ScopedDisabler const disabler;
#endif
    int provided = 0;
    MPI_Init_thread(&argc, &argv, MPI_THREAD_FUNNELED, &provided);
}

/// MPI is not ended yet, and what it keeps is no leak.
int lookForLeaks()
{
#ifdef SANITIZED
    return __lsan_do_recoverable_leak_check();
#else
    return 0;
#endif
}

} // namespace

int main(int argc, char** argv)
{
    beginMpi(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    silenceOtherRanks();
    testing::UnitTest::GetInstance()->listeners().Append(new Watchdog);
    int result = RUN_ALL_TESTS();
    result = std::max(result, lookForLeaks());
    int worst = 0;
    MPI_Allreduce(&result, &worst, 1, MPI_INT, MPI_MAX, MPI_COMM_WORLD);
    MPI_Finalize();
    return worst;
}
