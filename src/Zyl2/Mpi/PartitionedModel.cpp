#include <Zyl2/Mpi/PartitionedModel.h>

#include "Zyl2/Mox2/AttributeMap.h"
#include "Zyl2/Mox2/StepData.h"
#include "Zyl2/Mpi/Agreement.h"
#include "Zyl2/Mpi/CallStream.h"
#include "Zyl2/Mpi/Communicator.h"
#include "Zyl2/Mpi/Failure.h"
#include "Zyl2/Mpi/Inbox.h"
#include "Zyl2/Mpi/LocalTree.h"
#include "Zyl2/Mpi/Outbox.h"
#include "Zyl2/Mpi/PartitionIndex.h"
#include "Zyl2/Mpi/RankAttributes.h"
#include "Zyl2/Mpi/SharedTree.h"
#include "Zyl2/Mpi/StoredValues.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <optional>
#include <utility>

#include <unistd.h>

namespace Zyl2 {
namespace Mpi {

namespace Sites = Exception::Sites::Mpi;
using Mox2::ArrayView;

namespace {

constexpr std::size_t LeastMessageBytes = 4096;
constexpr std::size_t MostMessageBytes = std::size_t{1} << 30U;

void requireMpi()
{
    int isInitialized = 0;
    int isFinalized = 0;
    MPI_Initialized(&isInitialized);
    MPI_Finalized(&isFinalized);
    if (isInitialized == 0 || isFinalized != 0)
        raiseWith(Sites::NotInitialized, "MPI is not initialised");
}

/// Another number for another path or other options, as far as ranks would wait for each other, or
/// write elsewhere, if these were not the same.
std::uint64_t fingerprintOf(std::string const& path, PartitionedOptions const& options)
{
    constexpr std::uint64_t Prime = 0x100000001B3U;
    std::uint64_t fingerprint = 0xCBF29CE484222325U;
    auto const add = [&](std::uint64_t number) { fingerprint = (fingerprint ^ number) * Prime; };
    for (char const character : path)
        add(static_cast<unsigned char>(character));
    add(static_cast<std::uint64_t>(options.ranksPerFile));
    add(options.messageBytes);
    add(options.saver.overwrite ? 1 : 0);
    return fingerprint;
}

/// A negative number is refused when all ranks can be told.
int ranksPerFileOf(PartitionedOptions const& options)
{
    return std::max(options.ranksPerFile, 0);
}

void check(PartitionedOptions const& options)
{
    if (options.ranksPerFile < 0)
        raiseWith(Sites::NegativeRanksPerFile, "ranksPerFile is negative");
    if (options.messageBytes < LeastMessageBytes || options.messageBytes > MostMessageBytes)
        raiseWith(Sites::OtherMessageBytes, "messageBytes is not between 4096 and 1073741824");
}

void refuseOwn(Mox2::AttributeMap const& attributes)
{
    for (char const* own : {RankAttributes::Rank, RankAttributes::Ranks})
        if (attributes.count(own) != 0)
            raiseWith(Sites::OwnAttribute, std::string("the attribute ") + own +
                                               " is given by the partitioned model itself");
}

/// The values of an array as they come in.
class ReceivedPieces : public Mox2::ArrayPieces
{
public:
    ReceivedPieces(ArrayCall const& call, Inbox& inbox)
        : ArrayPieces(call.element, call.rows, call.columns), inbox_(inbox)
    {}

    ArrayView next() override
    {
        std::size_t const rowBytes = columns() * sizeof(float);
        std::size_t const whole = std::min(inbox_.available() / rowBytes, rows() - taken_);
        if (whole != 0) {
            taken_ += whole;
            return viewOf(inbox_.takeInPlace(whole * rowBytes), whole);
        }
        // The next row begins in one message and ends in the following one.
        inbox_.take(row_.data(), rowBytes);
        ++taken_;
        return viewOf(row_.data(), 1);
    }

private:
    ArrayView viewOf(void const* data, std::size_t count) const
    {
        return {data,
                element(),
                count,
                columns(),
                static_cast<std::ptrdiff_t>(columns() * sizeof(float)),
                sizeof(float)};
    }

    Inbox& inbox_;
    std::size_t taken_ = 0;
    std::array<unsigned char, 64> row_{};
};

} // namespace

class PartitionedModel::Impl
{
public:
    explicit Impl(PartitionedOptions const& options)
        : options_(options), exceptions_(std::uncaught_exceptions())
    {}

    /// \param all ranks, each of which has got so far
    void open(Communicator all, std::string const& path);
    void step(CollectiveCall call);
    bool checkpoint();
    void fail(char const* sentence, int errorCode) noexcept;
    double waitedSeconds() const { return model_ ? model_->waitedSeconds() : 0; }
    void close();
    void end() noexcept;

    LocalTree& local() { return *local_; }

    /// Does what a host asks for, and remembers what fails, for the others to be told.
    template <typename Action>
    auto adding(Action const& action)
    {
        requireUsable();
        try {
            return action();
        } catch (...) {
            failure_.remember();
            throw;
        }
    }

    void requireUsable() const;
    template <typename CallT>
    void pass(CallT const& call);
    void passArray(std::string const* name, Mox2::DatasetType type, ArrayView const& values,
                   Mox2::IdsView const& components, Mox2::StepList const& steps,
                   Mox2::Attributes const& attributes);

private:
    bool writes() const { return file_.rank() == 0; }
    template <typename Action>
    void tell(CollectiveCall call, Action const& action);
    void agreeOn(CollectiveCall call);
    void openFile(std::string const& path);
    void numberFiles();
    void transfer();
    void read();
    void readRank(int sender);
    void readArray(CallDecoder& decoder);
    void finishFile();
    void finishIndex();
    void letGo() noexcept;

    Communicator all_;
    Communicator file_;
    Communicator writers_;
    PartitionedOptions options_;
    int exceptions_;
    Failure failure_;
    /// Whether all ranks know of a failure, or of a model that is closed.
    bool isOver_ = false;
    std::optional<RankFailure> toldFailure_;

    std::optional<LocalTree> local_;
    std::optional<Outbox> outbox_;

    int fileNumber_ = 0;
    int fileCount_ = 0;
    // On a rank that writes:
    std::vector<int> ranksOfFile_;
    std::optional<Mox2::Model> model_;
    std::optional<SharedTree> tree_;
    std::optional<Inbox> inbox_;
    std::string createdFile_;
    FileState state_;
    // On the first rank:
    std::optional<PartitionIndex> index_;
    std::vector<int> fileOfRank_;
};

/// Does this rank's part, then lets all ranks know how it went.
template <typename Action>
void PartitionedModel::Impl::tell(CollectiveCall call, Action const& action)
{
    try {
        action();
    } catch (...) {
        failure_.remember();
    }
    agreeOn(call);
}

void PartitionedModel::Impl::agreeOn(CollectiveCall call)
{
    try {
        agree(all_, call, failure_);
    } catch (RankFailure const& failure) {
        letGo();
        toldFailure_.emplace(failure);
        throw;
    } catch (...) {
        failure_.remember();
        letGo();
        throw;
    }
}

/// Where the ranks of one file are among all, and which file it is.
void PartitionedModel::Impl::numberFiles()
{
    std::array<int, 2> numbers{};
    if (writes())
        numbers = {writers_.rank(), writers_.size()};
    MPI_Bcast(numbers.data(), static_cast<int>(numbers.size()), MPI_INT, 0, file_.get());
    fileNumber_ = numbers[0];
    fileCount_ = numbers[1];
}

void PartitionedModel::Impl::open(Communicator all, std::string const& path)
{
    all_ = std::move(all);
    file_ = ranksOfFile(all_, ranksPerFileOf(options_));
    writers_ = writersOf(all_, file_);
    numberFiles();
    tell(CollectiveCall::Open, [&] {
        check(options_);
        local_.emplace();
        outbox_.emplace(options_.messageBytes);
        if (writes()) {
            ranksOfFile_.resize(static_cast<std::size_t>(file_.size()));
            inbox_.emplace(file_.get(), file_.size() - 1, options_.messageBytes);
        }
        if (all_.rank() == 0)
            fileOfRank_.resize(static_cast<std::size_t>(all_.size()));
        index_.emplace(path, fileCount_);
    });
    int const rank = all_.rank();
    MPI_Gather(&rank, 1, MPI_INT, ranksOfFile_.data(), 1, MPI_INT, 0, file_.get());
    MPI_Gather(&fileNumber_, 1, MPI_INT, fileOfRank_.data(), 1, MPI_INT, 0, all_.get());
    try {
        tell(CollectiveCall::Open, [&] {
            if (rank == 0 && !options_.saver.overwrite && ::access(path.c_str(), F_OK) == 0)
                raiseWith(Sites::IndexExists, path + " exists, and overwriting was not asked for");
            if (writes())
                openFile(index_->pathOf(fileNumber_));
        });
        // Only now there is nothing of an earlier run behind these names.
        tell(CollectiveCall::Open, [&] {
            if (rank == 0)
                index_->write(fileOfRank_, {});
        });
    } catch (...) {
        if (!createdFile_.empty())
            (void)std::remove(createdFile_.c_str());
        throw;
    }
}

void PartitionedModel::Impl::openFile(std::string const& path)
{
    bool const isNew = ::access(path.c_str(), F_OK) != 0;
    model_.emplace();
    model_->saveTo(path, options_.saver);
    if (isNew)
        createdFile_ = path;
    tree_.emplace(*model_, all_.size());
    tree_->beginRank(all_.rank());
}

void PartitionedModel::Impl::requireUsable() const
{
    if (toldFailure_)
        boost::throw_exception(*toldFailure_);
    if (failure_.isThere)
        boost::throw_exception(RankFailure(all_.rank(), failure_.code, failure_.sentence.data()));
    if (isOver_)
        raiseWith(Sites::Closed, "the model was closed");
}

/// To the file, or to the rank that writes it.
template <typename CallT>
void PartitionedModel::Impl::pass(CallT const& call)
{
    if (writes())
        tree_->add(call);
    else
        CallEncoder(*outbox_).put(call);
}

void PartitionedModel::Impl::passArray(std::string const* name, Mox2::DatasetType type,
                                       ArrayView const& values, Mox2::IdsView const& components,
                                       Mox2::StepList const& steps,
                                       Mox2::Attributes const& attributes)
{
    refuseOwn(attributes.map());
    for (Mox2::StepData const& step : steps.data())
        refuseOwn(step.attributes);
    local_->addArray(name, type, values, components, steps, attributes);
    if (values.rows() == 0 || components.size() == 0)
        return;
    ArrayCall call;
    call.hasName = name != nullptr;
    call.name = name == nullptr ? std::string() : *name;
    call.type = type;
    call.ids.assign(components.data(), components.data() + components.size());
    call.steps = steps;
    call.attributes = attributes;
    call.element = storedElement(values);
    call.rows = values.rows();
    call.columns = values.columns();
    if (writes())
        return tree_->add(call, values);
    CallEncoder encoder(*outbox_);
    encoder.put(call);
    encoder.putValues(values);
}

void PartitionedModel::Impl::step(CollectiveCall call)
{
    if (isOver_)
        requireUsable();
    agreeOn(call);
    tell(call, [this] { transfer(); });
}

/// Values come to the file in the order of the ranks, whichever of them is the first to send.
void PartitionedModel::Impl::transfer()
{
    if (!writes()) {
        outbox_->sendTo(file_.get());
        return;
    }
    std::exception_ptr failure;
    try {
        tree_->endRank();
    } catch (...) {
        failure = std::current_exception();
    }
    if (file_.size() > 1) {
        std::exception_ptr const other = inbox_->receive([&] {
            if (failure == nullptr)
                read();
        });
        if (failure == nullptr)
            failure = other;
    }
    if (failure != nullptr)
        std::rethrow_exception(failure);
    tree_->beginRound();
    tree_->beginRank(all_.rank());
}

void PartitionedModel::Impl::read()
{
    for (int sender = 1; sender < file_.size(); ++sender)
        readRank(sender);
}

void PartitionedModel::Impl::readRank(int sender)
{
    inbox_->select(sender);
    tree_->beginRank(ranksOfFile_[static_cast<std::size_t>(sender)]);
    CallDecoder decoder(*inbox_);
    while (!inbox_->isAtEnd()) {
        switch (decoder.takeKind()) {
        case CallKind::Node:
            tree_->add(decoder.takeNode());
            break;
        case CallKind::NodeData:
            tree_->add(decoder.takeNodeData());
            break;
        case CallKind::Array:
            readArray(decoder);
            break;
        }
    }
    tree_->endRank();
}

void PartitionedModel::Impl::readArray(CallDecoder& decoder)
{
    ArrayCall const call = decoder.takeArray();
    ReceivedPieces pieces(call, *inbox_);
    tree_->add(call, pieces);
}

bool PartitionedModel::Impl::checkpoint()
{
    step(CollectiveCall::Checkpoint);
    int isOnDisk = 1;
    tell(CollectiveCall::Checkpoint, [&] {
        if (writes())
            isOnDisk = model_->checkpoint() ? 1 : 0;
    });
    int areAllOnDisk = 0;
    MPI_Allreduce(&isOnDisk, &areAllOnDisk, 1, MPI_INT, MPI_MIN, all_.get());
    return areAllOnDisk != 0;
}

void PartitionedModel::Impl::fail(char const* sentence, int errorCode) noexcept
{
    if (!isOver_)
        failure_.remember(errorCode, sentence);
}

void PartitionedModel::Impl::close()
{
    if (isOver_)
        return;
    step(CollectiveCall::Close);
    tell(CollectiveCall::Close, [this] { finishFile(); });
    finishIndex();
    isOver_ = true;
    letGo();
}

void PartitionedModel::Impl::finishFile()
{
    if (!writes())
        return;
    model_->close();
    state_ = stateOf(index_->pathOf(fileNumber_));
}

void PartitionedModel::Impl::finishIndex()
{
    std::vector<FileState> states;
    tell(CollectiveCall::Close, [&] {
        if (all_.rank() == 0)
            states.resize(static_cast<std::size_t>(fileCount_));
    });
    if (writes()) {
        static_assert(sizeof(FileState) == 16, "a state is sent as it is in memory");
        MPI_Gather(&state_, sizeof state_, MPI_BYTE, states.data(), sizeof state_, MPI_BYTE, 0,
                   writers_.get());
    }
    tell(CollectiveCall::Close, [&] {
        if (all_.rank() == 0)
            index_->write(fileOfRank_, states);
    });
}

/// Files that were not finished stay incomplete.
void PartitionedModel::Impl::letGo() noexcept
{
    isOver_ = true;
    if (model_)
        model_->abandon();
    tree_.reset();
    inbox_.reset();
    outbox_.reset();
    local_.reset();
}

void PartitionedModel::Impl::end() noexcept
{
    if (isOver_)
        return;
    int isFinalized = 0;
    MPI_Finalized(&isFinalized);
    if (isFinalized != 0)
        return letGo();
    if (std::uncaught_exceptions() <= exceptions_) {
        try {
            return close();
        } catch (...) {
            // A result must not get lost without a word; who wants to live on calls `close`.
            std::terminate();
        }
    }
    failure_.remember(1, "the model was destroyed by an exception of the host");
    try {
        agreeOn(CollectiveCall::Abandon);
    } catch (...) {
        // All ranks are told, this one by the exception that is on its way.
    }
}

PartitionedModel::PartitionedModel(MPI_Comm comm, std::string const& path,
                                   PartitionedOptions const& options)
{
    requireMpi();
    Communicator all = copyOf(comm);
    Failure failure;
    // Before the ranks part into those of each file: they would wait for each other there.
    if (!areAlike(all, fingerprintOf(path, options)))
        failure.remember(
            Exception::InvalidArguments().errorCode(),
            "Invalid arguments: the path or the options are not the same on all ranks");
    try {
        impl_.reset(new Impl(options));
    } catch (...) {
        failure.remember();
    }
    // From here on all ranks know of each other's failures, even of a lack of memory for this.
    agree(all, CollectiveCall::Open, failure);
    impl_->open(std::move(all), path);
}

PartitionedModel::~PartitionedModel() noexcept
{
    impl_->end();
}

unsigned int PartitionedModel::addNode(Mox2::NodeType type, std::string const& name,
                                       Mox2::Attributes const& attributes)
{
    return impl_->adding([&] {
        NodeCall const call = impl_->local().addNode(type, name, attributes);
        impl_->pass(call);
        return call.id;
    });
}

void PartitionedModel::setNodeData(unsigned int id, Mox2::NodeProperties const& properties,
                                   Mox2::Attributes const& attributes)
{
    impl_->adding([&] {
        impl_->local().model().setNodeData(id, properties, attributes);
        bool const isGroup = impl_->local().isGroup(id);
        impl_->pass(NodeDataCall{id, properties, isGroup ? attributes : Mox2::Attributes()});
    });
}

unsigned int PartitionedModel::getNodeId(std::string const& path, std::string const& separator)
{
    impl_->requireUsable();
    return impl_->local().model().getNodeId(path, separator);
}

unsigned int PartitionedModel::getNodeId(std::vector<std::string> const& names)
{
    impl_->requireUsable();
    return impl_->local().model().getNodeId(names);
}

void PartitionedModel::setCurrentNodeId(unsigned int id)
{
    impl_->requireUsable();
    impl_->local().model().setCurrentNodeId(id);
}

unsigned int PartitionedModel::moveToParentNode()
{
    impl_->requireUsable();
    return impl_->local().model().moveToParentNode();
}

Mox2::Array1d<unsigned int>
PartitionedModel::addAssemblyComponents(std::vector<std::string> const& names,
                                        std::string const& separator)
{
    return impl_->adding([&] {
        LocalTree& local = impl_->local();
        Mox2::Array1d<unsigned int> ids = local.model().addAssemblyComponents(names, separator);
        for (NodeCall const& call : local.newNodesOf(names, separator, ids))
            impl_->pass(call);
        return ids;
    });
}

Mox2::Array1d<unsigned int>
PartitionedModel::addAssemblyComponents(std::map<std::string, Mox2::Attributes> const& components,
                                        std::string const& separator)
{
    return impl_->adding([&] {
        LocalTree& local = impl_->local();
        Mox2::Array1d<unsigned int> ids =
            local.model().addAssemblyComponents(components, separator);
        std::vector<std::string> names;
        names.reserve(components.size());
        for (auto const& [name, attributes] : components)
            names.push_back(name);
        for (NodeCall const& call : local.newNodesOf(names, separator, ids))
            impl_->pass(call);
        return ids;
    });
}

void PartitionedModel::addView(std::string const* name, Mox2::DatasetType type,
                               ArrayView const& values, Mox2::IdsView const& components,
                               Mox2::Step const& step, Mox2::Attributes const& attributes)
{
    Mox2::StepList steps(1);
    steps.set(0, step);
    addView(name, type, values, components, steps, attributes);
}

void PartitionedModel::addView(std::string const* name, Mox2::DatasetType type,
                               ArrayView const& values, Mox2::IdsView const& components,
                               Mox2::StepList const& steps, Mox2::Attributes const& attributes)
{
    impl_->adding([&] { impl_->passArray(name, type, values, components, steps, attributes); });
}

void PartitionedModel::step()
{
    impl_->step(CollectiveCall::Step);
}

bool PartitionedModel::checkpoint()
{
    return impl_->checkpoint();
}

void PartitionedModel::fail(char const* sentence, int errorCode) noexcept
{
    impl_->fail(sentence, errorCode);
}

double PartitionedModel::waitedSeconds() const
{
    return impl_->waitedSeconds();
}

void PartitionedModel::close()
{
    impl_->close();
}

} // namespace Mpi
} // namespace Zyl2
