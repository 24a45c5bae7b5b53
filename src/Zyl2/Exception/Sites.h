#ifndef ZYL2_EXCEPTION_SITES_H
#define ZYL2_EXCEPTION_SITES_H

#include <Zyl2/Exception/Exception.h>

// Contract: where the library says that it failed. Hosts sort failures by kind, text, source, line
// and function, and have done so for longer than the sources have their present shape. What stands
// here therefore stays when code moves: a line is a name by now and points to nothing, and a
// function may be one that a failure was known by before its code went elsewhere.

namespace Zyl2 {
namespace Mpi {
class RankFailure;
} // namespace Mpi

namespace Exception {

/// How one failure presents itself.
/// \tparam KindT what is thrown
template <typename KindT>
struct Site
{
    /// Null for the default text of the kind.
    char const* text;
    /// Path of the source without its ending.
    char const* source;
    unsigned int line;
    /// Full signature. Null in templates, whose signature names the types that they are used with:
    /// there the place that fails gives its own.
    char const* function;
};

/// How a broken contract inside of the library presents itself before the process ends.
struct AssertionSite
{
    char const* expression;
    char const* source;
    unsigned int line;
    char const* function;
};

namespace Sites {

namespace Block {
inline constexpr char const* Source = "Zyl2/Wvf/Block";
inline constexpr Site<OutOfBounds> PositionPastEnd{
    "Invalid block position", Source, 62, "void Zyl2Wvf::Block::SetPosition(const PositionType&)"};
inline constexpr Site<MemoryAllocationException> NoMemory{
    nullptr, Source, 69, "void Zyl2Wvf::Block::AllocateAdditionalMemory(const std::size_t&)"};
inline constexpr Site<FileWriteException> WriteFailed{
    "Unable to write to file", Source, 81, "void Zyl2Wvf::Block::Write(FILE*, bool) const"};
inline constexpr Site<MemoryAllocationException> TooLong{
    nullptr, Source, 108, "void Zyl2Wvf::Block::Grow(uint64_t, uint64_t)"};
} // namespace Block

namespace CopyToBlock {
inline constexpr Site<MemoryAllocationException> CountTooLarge{
    nullptr, "Zyl2/Wvf/CopyToBlock", 42, "uint32_t Zyl2Wvf::EncodedCount(std::size_t)"};
} // namespace CopyToBlock

namespace BlockZlibCompressor {
inline constexpr char const* Source = "Zyl2/Wvf/BlockZlibCompressor";
inline constexpr char const* Function =
    "virtual void Zyl2Wvf::BlockZlibCompressor::operator()(Zyl2Wvf::Block&)";
inline constexpr Site<MemoryAllocationException> NoMemory{nullptr, Source, 62, Function};
inline constexpr Site<MemoryAllocationException> TooLong{nullptr, Source, 73, Function};
} // namespace BlockZlibCompressor

namespace Index {
inline constexpr char const* Source = "Zyl2/Wvf/Index";
inline constexpr Site<MiscelleneousException> ValueIntoFrozenBlock{
    "Attempt to write into a frozen block", Source, 98, "void Zyl2Wvf::Index::Put(Key&, const T&)"};
/// Another kind than for values, and so on purpose.
inline constexpr Site<KeyNotFound> BytesIntoFrozenBlock{
    nullptr, Source, 420,
    "void Zyl2Wvf::Index::Put(const std::string&, const void* const&, std::size_t)"};
inline constexpr Site<InvalidObjectState> SavedBefore{
    nullptr, Source, 248, "void Zyl2Wvf::Index::WriteBufferToFileStream(std::size_t, FILE*)"};
inline constexpr Site<MemoryAllocationException> NotCompressed{
    nullptr, Source, 306, "void Zyl2Wvf::Index::CheckCompressed(const Zyl2Wvf::Block&)"};
inline constexpr Site<InvalidObjectState> NothingToWrite{
    nullptr, Source, 343, "void Zyl2Wvf::Index::WriteAllBuffersToFileStream(FILE*)"};
inline constexpr Site<FileWriteException> WriteFailed{
    "Unable to write to file", Source, 364,
    "void Zyl2Wvf::Index::WriteAllBuffersToFileStream(FILE*)"};
inline constexpr Site<KeyNotFound> UnknownKey{
    nullptr, Source, 383,
    "Zyl2Wvf::BlockSizeLimiter& Zyl2Wvf::Index::GetLimiter(const std::string&)"};
inline constexpr Site<InvalidObjectState> PoolRanDry{"This point should not be reached", Source,
                                                     439, "void Zyl2Wvf::Index::FillPool()"};
inline constexpr Site<NotYetImplemented> SavedOutOfOrder{
    nullptr, Source, 511, "void Zyl2Wvf::Index::FlushFrozen(Zyl2Wvf::BlockSizeLimiter&, FILE*)"};
inline constexpr Site<FileWriteException> SeekFailed{
    "Saving the buffer failed", Source, 526,
    "void Zyl2Wvf::Index::WriteBufferToFileStream(std::size_t, FILE*)"};
inline constexpr Site<InvalidObjectState> TooFewSlotsFollow{
    nullptr, Source, 551,
    "void Zyl2Wvf::Index::CopyFollowingItemsToBlock(std::size_t, Zyl2Wvf::Block&) const"};
} // namespace Index

namespace WvFile {
inline constexpr char const* Source = "Zyl2/Wvf/WvFile";
inline constexpr char const* OpenFile =
    "void Zyl2Wvf::WvFile::OpenFile(const std::string&, const char*)";
inline constexpr Site<MiscelleneousException> StreamInUse{"File stream is already in use", Source,
                                                          52, OpenFile};
/// The path and a quote follow the text.
inline constexpr Site<MiscelleneousException> NotOpened{"Unable to open file \"", Source, 59,
                                                        OpenFile};
inline constexpr Site<FileOpenException> FileExists{
    "File exists.", Source, 113, "void Zyl2Wvf::WvFile::OpenFileForWriting(const string&, bool)"};
inline constexpr Site<FileOpenException> WideFileExists{
    "File exists.", Source, 124, "void Zyl2Wvf::WvFile::OpenFileForWriting(const wstring&, bool)"};
} // namespace WvFile

namespace Recovery {
inline constexpr char const* Source = "Zyl2/Wvf/Recovery";
/// The path and a quote follow the text.
inline constexpr Site<MiscelleneousException> NotOpened{
    "Unable to open file \"", Source, 1,
    "Zyl2Wvf::RecoveryFolder Zyl2Wvf::RecoveryFolder::Make(const std::string&, bool)"};
inline constexpr Site<FileOpenException> EarlierRun{
    "File exists.", Source, 2,
    "Zyl2Wvf::RecoveryFolder Zyl2Wvf::RecoveryFolder::Make(const std::string&, bool)"};
inline constexpr Site<FileWriteException> NoRoomForLog{
    "Unable to write to file", Source, 3, "void Zyl2Wvf::RecoveryLog::Reserve(std::size_t)"};
inline constexpr Site<FileWriteException> NotKept{"Unable to write to file", Source, 4,
                                                  "void Zyl2Wvf::KeptBlocks::Keep()"};
inline constexpr Site<FileWriteException> NotRecorded{
    "Unable to write to file", Source, 5, "void Zyl2::Mox2::Recovery::Recorder::begin()"};
inline constexpr Site<MiscelleneousException> NotRecovered{
    "Unable to recover", Source, 6, "Zyl2::Mox2::RecoveredRun Zyl2::Mox2::recoverRun()"};
} // namespace Recovery

namespace AdtTree {
inline constexpr char const* Source = "Zyl2/Adt/AdtTree";
inline constexpr Site<KeyNotFound> NoSuchChild{nullptr, Source, 106, nullptr};
inline constexpr Site<KeyNotFound> IdNotHandedOut{nullptr, Source, 210, nullptr};
inline constexpr Site<KeyNotFound> NoCurrentNode{
    nullptr, Source, 219,
    "Zyl2Adt::Tree<T>::NodeType& Zyl2Adt::Tree<T>::GetCurrentNode() [with T = Zyl2Mox::Node*; "
    "NodeType = Zyl2Adt::TreeNode<Zyl2Mox::Node*>]"};
inline constexpr Site<KeyNotFound> NoSuchNode{nullptr, Source, 254, nullptr};
} // namespace AdtTree

namespace Group {
inline constexpr char const* Source = "Zyl2/Mox/Group";
inline constexpr char const* Text = "invalid array size";
inline constexpr Site<InvalidArguments> Translation{
    Text, Source, 82, "void Zyl2Mox::Group::SetTranslation(const std::vector<float>&)"};
inline constexpr Site<InvalidArguments> Rotation{
    Text, Source, 104, "void Zyl2Mox::Group::SetRotation(const std::vector<float>&)"};
inline constexpr Site<InvalidArguments> Scale{
    Text, Source, 124, "void Zyl2Mox::Group::SetScale(const std::vector<float>&)"};
} // namespace Group

namespace Material {
inline constexpr char const* Source = "Zyl2/Mox/Material";
inline constexpr char const* Text = "invalid array size";
inline constexpr Site<InvalidArguments> DiffuseColor{
    Text, Source, 74, "void Zyl2Mox::Material::SetDiffuseColor(const std::vector<float>&)"};
inline constexpr Site<InvalidArguments> EmissiveColor{
    Text, Source, 100, "void Zyl2Mox::Material::SetEmissiveColor(const std::vector<float>&)"};
inline constexpr Site<InvalidArguments> SpecularColor{
    Text, Source, 131, "void Zyl2Mox::Material::SetSpecularColor(const std::vector<float>&)"};
inline constexpr Site<InvalidArguments> AmbientColor{
    Text, Source, 157, "void Zyl2Mox::Material::SetAmbientColor(const std::vector<float>&)"};
} // namespace Material

namespace Geometry {
inline constexpr char const* Source = "Zyl2/Mox/Geometry";
inline constexpr Site<KeyNotFound> NoPositionInOldLayout{
    nullptr, Source, 143,
    "void Zyl2Mox::Geometry::WriteWv_l05(Zyl2Wvf::WvFile&, const std::string&, "
    "const std::string&, const std::string&) const"};
inline constexpr Site<KeyNotFound> NoPosition{
    nullptr, Source, 180,
    "void Zyl2Mox::Geometry::WriteWv(Zyl2Wvf::WvFile&, const std::string&, "
    "const std::string&, const std::string&) const"};
} // namespace Geometry

namespace Tree {
inline constexpr char const* Source = "Zyl2/Mox/Tree";
inline constexpr char const* RootIsSet = "Root node properties are already set";
inline constexpr char const* SaveTree = "void Zyl2Mox::Tree::SaveTree(Zyl2Wvf::WvFile&)";
inline constexpr Site<InvalidObjectState> SecondRootGroup{
    RootIsSet, Source, 212,
    "void Zyl2Mox::Tree::SetRootGroup(const std::string&, const Zyl2Util::AttributeList&)"};
inline constexpr Site<InvalidObjectState> SecondFlaggedRootGroup{
    RootIsSet, Source, 222,
    "void Zyl2Mox::Tree::SetRootGroup(const std::string&, const Zyl2Util::AttributeList&, "
    "uint8_t)"};
inline constexpr Site<InvalidObjectState> SecondRootShape{
    RootIsSet, Source, 232, "void Zyl2Mox::Tree::SetRootShape(const std::string&)"};
inline constexpr Site<FileWriteException> CloseFailed{
    "Unable to write to file", Source, 243,
    "void Zyl2Mox::Tree::FlushAndClose(Zyl2Wvf::WvFile&, const std::string&)"};
inline constexpr AssertionSite LinkFromNoGeometry{
    "0 != geom_ptr", Source, 480,
    "void Zyl2Mox::Tree::SetLink(const VariableId&, const VariableId&)"};
inline constexpr AssertionSite NoGroup{"0 != grp_ptr", Source, 2261, SaveTree};
inline constexpr AssertionSite NoShape{"0 != shape_ptr", Source, 2267, SaveTree};
inline constexpr AssertionSite NoGeometry{"0 != geom_ptr", Source, 2274, SaveTree};
inline constexpr AssertionSite NoNodeSets{"0 != node_sets_ptr", Source, 2281, SaveTree};
} // namespace Tree

namespace ValueGetter {
inline constexpr Site<TemplateSpecializationNotDefined> OtherType{
    nullptr, "Zyl2/Variant/Visitor/ValueGetter", 40, nullptr};
} // namespace ValueGetter

namespace Database {
inline constexpr char const* Source = "Zyl2/Mox2/Database";
inline constexpr Site<InvalidObjectState> NotEmpty{
    "Not Empty", Source, 90, "void Zyl2::Mox2::Database::assertEmpty() const"};
inline constexpr Site<InvalidObjectState> NotInitialized{
    "Not initialized", Source, 97, "void Zyl2::Mox2::Database::assertNotEmpty() const"};
inline constexpr Site<InvalidObjectState> FileNotOpen{
    "File not open.", Source, 114, "void Zyl2::Mox2::Database::assertOpenedForWriting() const"};
inline constexpr Site<InvalidObjectState> FileNotWritable{
    "File not opened in write mode", Source, 117,
    "void Zyl2::Mox2::Database::assertOpenedForWriting() const"};
} // namespace Database

namespace Saver {
inline constexpr char const* Source = "Zyl2/Mox2/Saver";
inline constexpr char const* ExtractFrom =
    "virtual void Zyl2::Mox2::Saver::extractFrom(Zyl2::Mox2::Database&)";
inline constexpr Site<InvalidArguments> NoSuchEncoder{nullptr, Source, 21, ExtractFrom};
inline constexpr Site<InvalidArguments> TooManyThreads{nullptr, Source, 22, ExtractFrom};
inline constexpr Site<InvalidArguments> BlockTooLarge{nullptr, Source, 23, ExtractFrom};
inline constexpr Site<InvalidArguments> NeitherYesNorNo{nullptr, Source, 24, ExtractFrom};
} // namespace Saver

namespace Model {
inline constexpr Site<FileWriteException> WrittenInVain{
    "Unable to write to file", "Zyl2/Mox2/Model", 183, "void Zyl2::Mox2::Model::close()"};
inline constexpr Site<InvalidArguments> OtherElement{
    nullptr, "Zyl2/Mox2/Model", 190,
    "void Zyl2::Mox2::Model::addArrayPieces(Zyl2::Mox2::DatasetType, Zyl2::Mox2::ArrayPieces&, "
    "const Zyl2::Mox2::IdsView&, const Zyl2::Mox2::StepList&, const Zyl2::Mox2::Attributes&)"};
} // namespace Model

namespace ArrayView {
inline constexpr Site<InvalidArguments> NoWholeRows{
    nullptr, "Zyl2/Mox2/ArrayView", 30,
    "std::size_t Zyl2::Mox2::ArrayView::wholeRows(std::size_t, std::size_t)"};
} // namespace ArrayView

namespace Mesh {
inline constexpr char const* Source = "Zyl2/Mox2/Mesh";
inline constexpr Site<InvalidArguments> Nodes{
    nullptr, Source, 1,
    "void Zyl2::Mox2::Mesh::setNodes(const Zyl2::Mox2::ArrayView&, const Zyl2::Mox2::ArrayView&)"};
inline constexpr Site<InvalidArguments> Elements{
    nullptr, Source, 2,
    "void Zyl2::Mox2::Mesh::setElements(const std::vector<Zyl2::Mox2::Elements>&)"};
inline constexpr Site<InvalidArguments> Result{
    nullptr, Source, 3,
    "void Zyl2::Mox2::Mesh::addResult(const std::string&, Zyl2::Mox2::DatasetType, "
    "const Zyl2::Mox2::ArrayView&, const Zyl2::Mox2::Step&, const Zyl2::Mox2::Attributes&)"};
} // namespace Mesh

namespace ElementTypes {
inline constexpr Site<InvalidArguments> NoSuchType{
    nullptr, "Zyl2/Mox2/ElementTypes", 1,
    "const Zyl2::Mox2::ElementDescription& Zyl2::Mox2::describe(Zyl2::Mox2::ElementType)"};
} // namespace ElementTypes

namespace Attributes {
inline constexpr char const* Source = "Zyl2/Mox2/Helper/Attributes";
// Templates, and yet without the types: compilers differ in how they spell those.
inline constexpr Site<InvalidArguments> UnsupportedValue{
    nullptr, Source, 41,
    "Zyl2Util::AttributeValue Zyl2::Mox2::Helper::AttributeValueGetter::"
    "operator()(const T&) const"};
inline constexpr Site<InvalidArguments> UnsupportedVector{
    nullptr, Source, 48,
    "Zyl2Util::AttributeValue Zyl2::Mox2::Helper::AttributeValueGetter::"
    "operator()(const std::vector<T>&) const"};
} // namespace Attributes

namespace NodeAdder {
inline constexpr char const* Source = "Zyl2/Mox2/Adder/Node";
inline constexpr Site<InvalidArguments> RootOfOtherType{
    "Invalid node type for root node", Source, 72,
    "void Zyl2::Mox2::Adder::Node::addRootNode(Zyl2Mox::Tree&)"};
inline constexpr Site<InvalidArguments> NodeOfOtherType{
    "Invalid node type", Source, 86,
    "void Zyl2::Mox2::Adder::Node::addNonRootNode(Zyl2Mox::Tree&)"};
} // namespace NodeAdder

namespace Components {
inline constexpr char const* Source = "Zyl2/Mox2/Adder/Components";
inline constexpr Site<NotYetImplemented> OtherRoot{nullptr, Source, 108, nullptr};
inline constexpr Site<InvalidArguments> RelativePath{"Relative paths not supported", Source, 188,
                                                     nullptr};
} // namespace Components

namespace ArrayAdder {
inline constexpr char const* Source = "Zyl2/Mox2/Adder/ArrayProperty";
inline constexpr char const* CheckCounts =
    "void Zyl2::Mox2::Adder::checkArrayCounts(int64_t, int64_t, int64_t)";
inline constexpr Site<OverflowError> TooManyBytes{nullptr, Source, 28, CheckCounts};
inline constexpr Site<UnderflowError> NegativeCount{nullptr, Source, 68, CheckCounts};
inline constexpr Site<OverflowError> TooManyComponents{nullptr, Source, 70, CheckCounts};
inline constexpr Site<OverflowError> TooManyRows{nullptr, Source, 72, CheckCounts};
inline constexpr Site<InvalidArguments> OtherWidth{nullptr, Source, 80, nullptr};
inline constexpr Site<InvalidArguments> NoValues{nullptr, Source, 84, nullptr};
inline constexpr Site<OverflowError> ValueDoesNotFit{nullptr, Source, 88, nullptr};
inline constexpr Site<InvalidArguments> OtherPiece{nullptr, Source, 92, nullptr};
} // namespace ArrayAdder

namespace ArrayProperty {
inline constexpr char const* Source = "Zyl2/Mox2/ArrayProperty";
inline constexpr char const* NoName = "Can't guess result name for specified type";
inline constexpr Site<InvalidArguments> NoDefaultName{NoName, Source, 52, nullptr};
inline constexpr Site<InvalidArguments> NoWidth{"Can't guess result width for specified type",
                                                Source, 62, nullptr};
/// Speaks of the name, though it is the variable's type that there is none of.
inline constexpr Site<InvalidArguments> NoVariableType{NoName, Source, 73, nullptr};
} // namespace ArrayProperty

namespace CurrentNodeId {
inline constexpr Site<OutOfBounds> NoSuchNode{
    nullptr, "Zyl2/Mox2/Modifier/CurrentNodeId", 46,
    "virtual void Zyl2::Mox2::Modifier::CurrentNodeId::update(Zyl2::Mox2::Database&)"};
} // namespace CurrentNodeId

namespace NodeData {
inline constexpr char const* Source = "Zyl2/Mox2/Modifier/NodeData";
inline constexpr char const* Update =
    "virtual void Zyl2::Mox2::Modifier::NodeData::update(Zyl2::Mox2::Database&)";
inline constexpr Site<OutOfBounds> NoSuchNode{nullptr, Source, 67, Update};
inline constexpr Site<InvalidArguments> NoSuchProperty{"Invalid properties", Source, 117, Update};
inline constexpr Site<InvalidArguments> OtherKindOfNode{"empty node", Source, 133, nullptr};
} // namespace NodeData

namespace Mpi {
inline constexpr char const* Source = "Zyl2/Mpi";
inline constexpr char const* Check =
    "void Zyl2::Mpi::{anonymous}::check(const Zyl2::Mpi::PartitionedOptions&)";
inline constexpr char const* RaiseForFile =
    "void Zyl2::Mpi::{anonymous}::raiseForFile(const std::string&, const char*)";
// 1 was once the line of all that a rank fails at itself.
inline constexpr Site<Zyl2::Mpi::RankFailure> RankFailed{
    nullptr, Source, 2,
    "void Zyl2::Mpi::{anonymous}::raiseFailureOf(int, const Zyl2::Mpi::Communicator&, "
    "const Zyl2::Mpi::Failure&)"};
inline constexpr Site<InvalidObjectState> OtherCall{
    nullptr, Source, 3,
    "void Zyl2::Mpi::agree(const Communicator&, CollectiveCall, const Failure&)"};
inline constexpr Site<InvalidObjectState> NotInitialized{
    nullptr, Source, 4, "void Zyl2::Mpi::{anonymous}::requireMpi()"};
inline constexpr Site<InvalidArguments> RanksNotCopied{
    nullptr, Source, 5, "Zyl2::Mpi::Communicator Zyl2::Mpi::copyOf(MPI_Comm)"};
inline constexpr Site<InvalidArguments> NegativeRanksPerFile{nullptr, Source, 6, Check};
inline constexpr Site<InvalidArguments> OtherMessageBytes{nullptr, Source, 7, Check};
inline constexpr Site<InvalidArguments> OtherEnding{
    nullptr, Source, 8, "Zyl2::Mpi::Index::Index(const std::string&, int)"};
inline constexpr Site<FileOpenException> IndexExists{
    nullptr, Source, 9,
    "Zyl2::Mpi::PartitionedModel::Impl::open(Zyl2::Mpi::Communicator, "
    "const std::string&)::<lambda()>"};
inline constexpr Site<InvalidObjectState> Closed{
    nullptr, Source, 10, "void Zyl2::Mpi::PartitionedModel::Impl::requireUsable() const"};
inline constexpr Site<InvalidArguments> OwnAttribute{
    nullptr, Source, 11, "void Zyl2::Mpi::{anonymous}::refuseOwn(const Zyl2::Mox2::AttributeMap&)"};
// A template, and yet without the type: compilers differ in how they spell it.
inline constexpr Site<OverflowError> ValueDoesNotFit{
    nullptr, Source, 12,
    "Zyl2::Mpi::{anonymous}::Conversion<From>::Stored "
    "Zyl2::Mpi::{anonymous}::Conversion<From>::stored(std::size_t, std::size_t) const"};
inline constexpr Site<InvalidArguments> OtherRoot{
    nullptr, Source, 13, "unsigned int Zyl2::Mpi::SharedTree::addRoot(const Zyl2::Mpi::NodeCall&)"};
inline constexpr Site<InvalidArguments> RanksDiffer{
    nullptr, Source, 14,
    "void Zyl2::Mpi::SharedTree::refuse(unsigned int, const std::string&, int) const"};
inline constexpr Site<FileWriteException> FileNotReadAgain{nullptr, Source, 15, RaiseForFile};
inline constexpr Site<FileWriteException> IndexNotCreated{nullptr, Source, 16, RaiseForFile};
inline constexpr Site<FileWriteException> IndexNotWritten{nullptr, Source, 17, RaiseForFile};
inline constexpr Site<FileWriteException> IndexNotReplaced{nullptr, Source, 18, RaiseForFile};
} // namespace Mpi

} // namespace Sites
} // namespace Exception
} // namespace Zyl2

#endif
