#include "JoinedShape.h"

#include "moxread/FormatError.h"
#include "moxread/NodePath.h"
#include "moxread/Text.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <numeric>
#include <sstream>
#include <unordered_map>

namespace Mox::Join {

using MoxRead::ElementType;
using MoxRead::FormatError;
using MoxRead::quoted;
using Zyl2::Mox2::DatasetType;

namespace {

constexpr char const* nodeIds = "Node Ids";
constexpr char const* elementIds = "Element IDs";
constexpr char const* coordinates = "Coordinates";
constexpr char const* connectivity = "Connectivity";
constexpr char const* polylength = "Polylength";

constexpr std::uint32_t noPiece = std::numeric_limits<std::uint32_t>::max();

DatasetType typeFor(std::uint32_t variableType)
{
    // In the order of the variable types: that of results from 12 on.
    constexpr std::uint32_t firstResult = 12;
    switch (variableType) {
    case 1:
        return DatasetType::Coordinates;
    case 4:
        return DatasetType::Connectivity1;
    case 5:
        return DatasetType::Connectivity2;
    case 6:
        return DatasetType::Connectivity3;
    case 9:
        return DatasetType::Polylength1;
    default:
        return static_cast<DatasetType>(static_cast<std::uint32_t>(DatasetType::Result10) +
                                        variableType - firstResult);
    }
}

MoxRead::Attributes withoutRank(MoxRead::Attributes attributes)
{
    attributes.erase("Rank");
    attributes.erase("Ranks");
    return attributes;
}

Zyl2::Mox2::Attributes attributesOf(MoxRead::Attributes const& attributes)
{
    Zyl2::Mox2::Attributes result;
    for (auto const& [name, value] : withoutRank(attributes))
        std::visit([&, &key = name](auto const& one) { result.set(key, one); }, value);
    return result;
}

} // namespace

MoxRead::Variable const& JoinedShape::Dataset::first() const
{
    return **std::find_if(ofPiece.begin(), ofPiece.end(),
                          [](Variable const* variable) { return variable != nullptr; });
}

JoinedShape::JoinedShape(MoxRead::Model& model, std::vector<MoxRead::Node const*> pieces,
                         Options const& options)
    : model_(model), pieces_(std::move(pieces)), options_(options)
{
    findDatasets();
    bool const isOne = pieces_.size() == 1;
    canBeJoined_ =
        isOne || (haveAll(nodeIds, coordinates) && haveAll(polylength, connectivity) &&
                  areNumbers(nodeIds) && areNumbers(polylength) && areNumbers(connectivity));
    if (canBeJoined_)
        mapRows();
}

/// In the order of the first piece, then those that only later ones have.
void JoinedShape::findDatasets()
{
    std::unordered_map<std::string, std::size_t> places;
    for (std::size_t piece = 0; piece < pieces_.size(); ++piece) {
        for (Variable const& variable : pieces_[piece]->geometry()->variables) {
            auto const [place, isNew] = places.emplace(variable.name, datasets_.size());
            if (isNew)
                datasets_.push_back(
                    {variable.name, std::vector<Variable const*>(pieces_.size(), nullptr)});
            datasets_[place->second].ofPiece[piece] = &variable;
        }
    }
}

MoxRead::Variable const* JoinedShape::find(std::size_t piece, char const* name) const
{
    return model_.variable(pieces_[piece]->id, name);
}

/// Whether each piece that has one of two datasets has the other, too, and as many rows where they
/// have to agree.
bool JoinedShape::haveAll(char const* name, char const* other) const
{
    for (std::size_t piece = 0; piece < pieces_.size(); ++piece) {
        Variable const* const one = find(piece, name);
        Variable const* const two = find(piece, other);
        if (two != nullptr && one == nullptr)
            return false;
        bool const mustAgree = std::strcmp(name, nodeIds) == 0 && one != nullptr && two != nullptr;
        if (mustAgree && model_.resolve(*one).rows() != model_.resolve(*two).rows())
            return false;
    }
    return true;
}

/// Whether a dataset, where there is one, has one integer in each row.
bool JoinedShape::areNumbers(char const* name) const
{
    for (std::size_t piece = 0; piece < pieces_.size(); ++piece) {
        Variable const* const variable = find(piece, name);
        if (variable == nullptr)
            continue;
        Variable const& stored = model_.resolve(*variable);
        if (stored.width != 1 || stored.elementType() != ElementType::Uint32)
            return false;
    }
    return true;
}

std::vector<std::vector<std::uint32_t>> JoinedShape::wordsOf(char const* name)
{
    std::vector<std::vector<std::uint32_t>> words(pieces_.size());
    for (std::size_t piece = 0; piece < pieces_.size(); ++piece)
        if (Variable const* const variable = find(piece, name))
            words[piece] = model_.read(*variable).words;
    return words;
}

std::vector<std::size_t> JoinedShape::rowsOf(char const* name) const
{
    std::vector<std::size_t> rows(pieces_.size());
    for (std::size_t piece = 0; piece < pieces_.size(); ++piece)
        if (Variable const* const variable = find(piece, name))
            rows[piece] = model_.resolve(*variable).rows();
    return rows;
}

void JoinedShape::mapRows()
{
    bool const isOne = pieces_.size() == 1;
    nodes_ = isOne ? RowMap::inOrder(rowsOf(coordinates)) : RowMap::byIds(wordsOf(nodeIds));
    bool const haveIds =
        !isOne && areNumbers(elementIds) && rowsOf(elementIds) == rowsOf(polylength);
    elements_ = haveIds ? RowMap::byIds(wordsOf(elementIds)) : RowMap::inOrder(rowsOf(polylength));
    ownerOfElement_.assign(elements_.count(), noPiece);
    for (std::size_t piece = pieces_.size(); piece-- > 0;)
        for (std::size_t row = 0; row < elements_.countOf(piece); ++row)
            ownerOfElement_[elements_.rowOf(piece, row)] = static_cast<std::uint32_t>(piece);
}

void JoinedShape::write(Zyl2::Mox2::Model& to, unsigned int shape)
{
    for (Dataset const& dataset : datasets_) {
        requireAlike(dataset);
        tellOfOtherAttributes(dataset);
        RowMap const* const map = rowsFor(dataset);
        if (pieces_.size() == 1)
            add(to, shape, dataset, model_.read(dataset.first()).words);
        else if (dataset.name == connectivity)
            add(to, shape, dataset, joinedConnectivity(dataset));
        else if (map != nullptr)
            add(to, shape, dataset, joined(dataset, *map));
        else
            add(to, shape, dataset, behindEachOther(dataset));
    }
}

void JoinedShape::requireAlike(Dataset const& dataset) const
{
    Variable const& first = model_.resolve(dataset.first());
    for (Variable const* const variable : dataset.ofPiece) {
        if (variable == nullptr)
            continue;
        Variable const& stored = model_.resolve(*variable);
        if (stored.width != first.width || stored.elementCode() != first.elementCode() ||
            variable->variableType() != dataset.first().variableType())
            throw FormatError(titleOf(dataset) + " is not of the same type in all files");
    }
}

/// A dataset has one set of attributes: what other pieces say is lost.
void JoinedShape::tellOfOtherAttributes(Dataset const& dataset) const
{
    MoxRead::Attributes const first = withoutRank(dataset.first().attributes);
    bool const isOther =
        std::any_of(dataset.ofPiece.begin(), dataset.ofPiece.end(), [&](Variable const* variable) {
            return variable != nullptr && withoutRank(variable->attributes) != first;
        });
    if (isOther)
        options_.warn(titleOf(dataset) +
                      " has other attributes among ranks: those of the lowest rank are taken");
}

/// What the rows of a dataset are of; null when it can't be told.
RowMap const* JoinedShape::rowsFor(Dataset const& dataset) const
{
    // Results at nodes and at elements, as docs/model-layout.md has them.
    constexpr std::uint32_t firstAtNodes = 12;
    constexpr std::uint32_t firstAtElements = 16;
    constexpr std::uint32_t lastAtElements = 19;
    std::uint32_t const type = dataset.first().variableType();
    bool const isAtNodes = type == 1 || (type >= firstAtNodes && type < firstAtElements);
    bool const isAtElements =
        dataset.name == polylength || (type >= firstAtElements && type <= lastAtElements);
    if (isAtNodes && fits(dataset, nodes_))
        return &nodes_;
    return isAtElements && fits(dataset, elements_) ? &elements_ : nullptr;
}

bool JoinedShape::fits(Dataset const& dataset, RowMap const& map) const
{
    for (std::size_t piece = 0; piece < pieces_.size(); ++piece)
        if (dataset.ofPiece[piece] != nullptr &&
            model_.resolve(*dataset.ofPiece[piece]).rows() != map.countOf(piece))
            return false;
    return true;
}

/// Where several pieces have values of the same row, those of the first piece are taken.
std::vector<std::uint32_t> JoinedShape::joined(Dataset const& dataset, RowMap const& map)
{
    Variable const& form = model_.resolve(dataset.first());
    JoinedRows rows(map, form.elementType(), form.width);
    for (std::size_t piece = 0; piece < pieces_.size(); ++piece)
        if (dataset.ofPiece[piece] != nullptr)
            rows.take(piece, model_.read(*dataset.ofPiece[piece]).words);
    compare(dataset, rows);
    std::size_t const missing = rows.missing();
    if (missing != 0)
        options_.warn(titleOf(dataset) + " has no values of " + std::to_string(missing) +
                      (missing == 1 ? " row" : " rows") + ": there is " +
                      (form.elementType() == ElementType::Float ? "NaN" : "0") + " instead");
    return rows.takeWords();
}

void JoinedShape::compare(Dataset const& dataset, JoinedRows const& rows)
{
    // Integers, such as numbers of materials, get no tolerance: the next may mean something else.
    constexpr double usual = 1e-6;
    bool const isFloat = model_.resolve(dataset.first()).elementType() == ElementType::Float;
    double const unlessGiven = isFloat ? usual * rows.largest() : 0;
    if (rows.difference() <= options_.tolerance.value_or(unlessGiven))
        return;
    std::ostringstream text;
    text << titleOf(dataset) << " differs among ranks in " << rows.different()
         << (rows.different() == 1 ? " row" : " rows") << ", by " << rows.difference()
         << " at most: that of the lowest rank is taken";
    options_.warn(text.str());
}

/// Where the nodes of each joined element begin, and behind the last of them.
std::vector<std::uint64_t>
JoinedShape::startsOfElements(std::vector<std::vector<std::uint32_t>> const& lengths) const
{
    std::vector<std::uint64_t> starts(elements_.count() + 1);
    for (std::size_t piece = 0; piece < pieces_.size(); ++piece)
        for (std::size_t row = 0; row < elements_.countOf(piece); ++row)
            if (ownerOfElement_[elements_.rowOf(piece, row)] == piece)
                starts[elements_.rowOf(piece, row) + 1] = lengths[piece][row];
    for (std::size_t row = 0; row < elements_.count(); ++row)
        starts[row + 1] += starts[row];
    return starts;
}

/// Makes rows of the joined nodes of those of a piece's own.
std::vector<std::uint32_t> JoinedShape::nodesOfPiece(Dataset const& dataset, std::size_t piece,
                                                     std::vector<std::uint32_t> const& lengths)
{
    std::vector<std::uint32_t> nodes = model_.read(*dataset.ofPiece[piece]).words;
    std::uint64_t const said = std::accumulate(lengths.begin(), lengths.end(), std::uint64_t{0});
    if (nodes.size() != said)
        throw FormatError(titleOf(dataset) + " has " + (nodes.size() < said ? "fewer" : "more") +
                          " nodes than " + quoted(polylength) + " says");
    for (std::uint32_t& node : nodes) {
        if (node >= nodes_.countOf(piece))
            throw FormatError(titleOf(dataset) + " names a node that is not there");
        node = nodes_.rowOf(piece, node);
    }
    return nodes;
}

/// Elements that several pieces have are taken from the first.
std::vector<std::uint32_t> JoinedShape::joinedConnectivity(Dataset const& dataset)
{
    std::vector<std::vector<std::uint32_t>> const lengths = wordsOf(polylength);
    std::vector<std::uint64_t> const starts = startsOfElements(lengths);
    std::vector<std::uint32_t> words(starts.back());
    std::size_t different = 0;
    for (std::size_t piece = 0; piece < pieces_.size(); ++piece) {
        if (dataset.ofPiece[piece] == nullptr)
            continue;
        std::vector<std::uint32_t> const own = nodesOfPiece(dataset, piece, lengths[piece]);
        auto element = own.begin();
        for (std::size_t row = 0; row < elements_.countOf(piece); ++row) {
            std::uint32_t const to = elements_.rowOf(piece, row);
            auto const end = element + lengths[piece][row];
            auto const place = words.begin() + static_cast<std::ptrdiff_t>(starts[to]);
            auto const behind = words.begin() + static_cast<std::ptrdiff_t>(starts[to + 1]);
            if (ownerOfElement_[to] == piece)
                std::copy(element, end, place);
            else if (!std::equal(element, end, place, behind))
                ++different;
            element = end;
        }
    }
    if (different != 0)
        options_.warn(titleOf(dataset) + " has other nodes among ranks for " +
                      std::to_string(different) + (different == 1 ? " element" : " elements") +
                      " of the same id: those of the lowest rank are taken");
    return words;
}

std::vector<std::uint32_t> JoinedShape::behindEachOther(Dataset const& dataset)
{
    options_.warn(titleOf(dataset) + " is neither of nodes nor of elements: the values of the "
                                     "ranks are one behind the other");
    std::vector<std::uint32_t> words;
    for (Variable const* const variable : dataset.ofPiece) {
        if (variable == nullptr)
            continue;
        std::vector<std::uint32_t> const own = model_.read(*variable).words;
        words.insert(words.end(), own.begin(), own.end());
    }
    return words;
}

void JoinedShape::add(Zyl2::Mox2::Model& to, unsigned int shape, Dataset const& dataset,
                      std::vector<std::uint32_t> const& words) const
{
    using Zyl2::Mox2::ArrayView;
    Variable const& first = dataset.first();
    Variable const& stored = model_.resolve(first);
    auto const element = stored.elementType() == ElementType::Float ? ArrayView::Element::Float32
                                                                    : ArrayView::Element::UInt32;
    std::size_t const width = stored.width;
    ArrayView const values(words.data(), element, words.size() / width, width,
                           static_cast<std::ptrdiff_t>(width * sizeof(float)), sizeof(float));
    to.addArrayProperty(first.datasetName(), typeFor(first.variableType()), values, shape,
                        Zyl2::Mox2::Step(first.stepName(), attributesOf(first.attributes)));
}

std::string JoinedShape::titleOf(Dataset const& dataset) const
{
    Variable const& first = dataset.first();
    return quoted(first.datasetName()) +
           (first.hasStep() ? " step " + quoted(first.stepName()) : "") + " of " +
           quoted(MoxRead::NodePath::of(model_, MoxRead::ownerOf(model_, *pieces_.front())));
}

} // namespace Mox::Join
