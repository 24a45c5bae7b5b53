#ifndef TESTS_FAULT_RECOVERABLERUN_H
#define TESTS_FAULT_RECOVERABLERUN_H

#include <Zyl2/Mox2/Model.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace Fault {

/// A program that makes random calls of all kinds, right and wrong ones, the same for the same
/// seed.
class RecoverableRun
{
public:
    /// Whether nodes are added wherever the cursor was left, or where the call sets it.
    enum class Cursor
    {
        Left,
        Set
    };

    /// \param seed fixes the calls, the size of blocks, the encoder and the number of threads
    explicit RecoverableRun(std::uint32_t seed, Cursor cursor = Cursor::Left);

    /// Calls that change a model.
    std::size_t callCount() const { return calls_.size(); }

    /// Opens the file, makes the calls, as many as are asked for, and catches what they throw.
    /// \param done is called with the number of calls that have ended, after each
    void makeCalls(Zyl2::Mox2::Model& model, std::string const& path, bool isRecoverable,
                   std::size_t count, std::function<void(std::size_t)> const& done = {}) const;

    /// Opens the file with one call of the library.
    /// \return whether it did
    bool open(Zyl2::Mox2::Model& model, std::string const& path, bool isRecoverable) const;

    /// Makes all calls and catches what they throw; the library is at work meanwhile.
    /// \return those that returned, or threw what they throw whenever they are made
    std::vector<std::size_t> addedCalls(Zyl2::Mox2::Model& model) const;

    /// Makes these calls and catches what they throw.
    void makeCalls(Zyl2::Mox2::Model& model, std::vector<std::size_t> const& calls) const;

    /// Makes so many calls and closes the file: what a recovery has to give.
    void writeWhole(std::string const& path, std::size_t count) const;

    /// The file's bytes but for the writing record; for an encoder that expresses a block in
    /// several ways, what its blocks inflate to.
    std::string contentOf(std::string const& path) const;

    Zyl2::Mox2::SaverOptions const& options() const { return options_; }

private:
    using Call = std::function<void(Zyl2::Mox2::Model&)>;

    Call randomCall(std::uint32_t seed, std::size_t number);
    Call array(std::uint32_t seed, std::size_t number) const;

    Cursor cursor_;
    Zyl2::Mox2::SaverOptions options_;
    std::vector<Call> calls_;
    /// Ids that calls may name; some of them are no shapes.
    unsigned int ids_ = 3;
};

} // namespace Fault

#endif
