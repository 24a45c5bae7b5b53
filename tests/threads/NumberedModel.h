#ifndef TESTS_THREADS_NUMBEREDMODEL_H
#define TESTS_THREADS_NUMBEREDMODEL_H

#include "integration/ArrayCall.h"
#include "integration/Random.h"

#include <Zyl2/Mox2/Model.h>

#include <functional>
#include <string>
#include <vector>

namespace Threads {

/// A model that is made by every call of the public interface. Its names, ids and values depend on
/// its number, so that what strays from one model into another shows.
class NumberedModel
{
public:
    NumberedModel(unsigned int number, std::string path);

    /// The steps of a model's life, to be run once each and in this order.
    std::vector<std::function<void()>> lifeSteps();
    /// Runs all steps of the life, one after the other.
    void write();

    std::string const& path() const { return path_; }
    /// The messages of the calls that have to fail, in the order of the calls.
    std::vector<std::string> const& failures() const { return failures_; }

    /// First text of the file's writing record.
    std::string signature() const { return "model " + std::to_string(number_); }

private:
    void open();
    void addNodes();
    void addComponents();
    void describeNodes();
    void addArrays();
    void failOnPurpose();

    Integration::ArrayCall arrayCall(unsigned int form);
    std::vector<unsigned int> someShapes(bool single);
    std::vector<Integration::NamedStep> someSteps(bool single);
    void expectFailure(std::function<void()> const& call);

    unsigned int number_;
    std::string path_;
    Integration::Random random_;
    std::vector<unsigned int> shapes_;
    unsigned int steps_ = 0;
    std::vector<std::string> failures_;
    Zyl2::Mox2::Model model_;
};

} // namespace Threads

#endif
