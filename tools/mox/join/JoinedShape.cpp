#include "JoinedShape.h"

#include "moxread/FormatError.h"
#include "moxread/NodePath.h"
#include "moxread/Text.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
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

float floatFrom(std::uint32_t word)
{
    float value = 0;
    std::memcpy(&value, &word, sizeof value);
    return value;
}

double valueFrom(std::uint32_t word, ElementType type)
{
    return type == ElementType::Float ? static_cast<double>(floatFrom(word))
                                      : static_cast<double>(word);
}

/// NaN where there is no value; integers have nothing of that kind.
std::uint32_t noValue(ElementType type)
{
    constexpr std::uint32_t quietNaN = 0x7FC00000U;
    return type == ElementType::Float ? quietNaN : 0;
}

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

Zyl2::Mox2::Attributes attributesOf(MoxRead::Attributes const& attributes)
{
    Zyl2::Mox2::Attributes result;
    for (auto const& [name, value] : attributes)
        if (name != "Rank" && name != "Ranks")
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
    canBeJoined_ = isOne || (haveAll(nodeIds, coordinates) && haveAll(polylength, connectivity));
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
    bool const haveIds = !isOne && rowsOf(elementIds) == rowsOf(polylength);
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

/// Of values of one row in several pieces, the first is taken.
std::vector<std::uint32_t> JoinedShape::joined(Dataset const& dataset, RowMap const& map)
{
    Variable const& form = model_.resolve(dataset.first());
    ElementType const type = form.elementType();
    std::size_t const width = form.width;
    std::vector<std::uint32_t> words(map.count() * width, noValue(type));
    std::vector<bool> isKnown(map.count());
    std::size_t different = 0;
    double difference = 0;
    double largest = 0;
    for (std::size_t piece = 0; piece < pieces_.size(); ++piece) {
        if (dataset.ofPiece[piece] == nullptr)
            continue;
        std::vector<std::uint32_t> const own = model_.read(*dataset.ofPiece[piece]).words;
        for (std::size_t row = 0; row < map.countOf(piece); ++row) {
            std::size_t const to = map.rowOf(piece, row);
            bool const isFirst = !isKnown[to];
            bool isOther = false;
            for (std::size_t column = 0; column < width; ++column) {
                std::uint32_t const word = own[row * width + column];
                std::uint32_t& place = words[to * width + column];
                double const value = valueFrom(word, type);
                if (std::isfinite(value))
                    largest = std::max(largest, std::fabs(value));
                if (isFirst)
                    place = word;
                else if (word != place) {
                    double const distance = std::fabs(valueFrom(place, type) - value);
                    // A number and none are as different as can be.
                    bool const areBothNone =
                        std::isnan(valueFrom(place, type)) && std::isnan(value);
                    if (!areBothNone) {
                        isOther = isOther || !(distance <= 0);
                        difference =
                            std::max(difference, std::isnan(distance) ? HUGE_VAL : distance);
                    }
                }
            }
            different += isOther ? 1 : 0;
            isKnown[to] = true;
        }
    }
    compare(dataset, different, difference, largest);
    auto const missing = std::count(isKnown.begin(), isKnown.end(), false);
    if (missing != 0)
        options_.warn(titleOf(dataset) + " has no values of " + std::to_string(missing) +
                      (missing == 1 ? " row" : " rows") + ": there is " +
                      (type == ElementType::Float ? "NaN" : "0") + " instead");
    return words;
}

void JoinedShape::compare(Dataset const& dataset, std::size_t different, double difference,
                          double largest)
{
    constexpr double usual = 1e-6;
    double const tolerance = options_.tolerance ? *options_.tolerance : usual * largest;
    if (difference <= tolerance)
        return;
    std::ostringstream text;
    text << titleOf(dataset) << " differs among ranks in " << different
         << (different == 1 ? " row" : " rows") << ", by " << difference
         << " at most: that of the lowest rank is taken";
    options_.warn(text.str());
}

/// Rows of the pieces' nodes become those of the joined ones; elements that several pieces have are
/// taken from the first.
std::vector<std::uint32_t> JoinedShape::joinedConnectivity(Dataset const& dataset)
{
    std::vector<std::vector<std::uint32_t>> const lengths = wordsOf(polylength);
    std::vector<std::uint64_t> starts(elements_.count() + 1);
    for (std::size_t piece = 0; piece < pieces_.size(); ++piece)
        for (std::size_t row = 0; row < elements_.countOf(piece); ++row)
            if (ownerOfElement_[elements_.rowOf(piece, row)] == piece)
                starts[elements_.rowOf(piece, row) + 1] = lengths[piece][row];
    for (std::size_t row = 0; row < elements_.count(); ++row)
        starts[row + 1] += starts[row];
    std::vector<std::uint32_t> words(starts.back());
    for (std::size_t piece = 0; piece < pieces_.size(); ++piece) {
        if (dataset.ofPiece[piece] == nullptr)
            continue;
        std::vector<std::uint32_t> const own = model_.read(*dataset.ofPiece[piece]).words;
        std::uint64_t at = 0;
        for (std::size_t row = 0; row < elements_.countOf(piece); ++row) {
            std::uint32_t const length = lengths[piece][row];
            std::uint32_t const to = elements_.rowOf(piece, row);
            if (own.size() - at < length)
                throw FormatError(titleOf(dataset) + " has fewer nodes than " + quoted(polylength) +
                                  " says");
            for (std::uint32_t node = 0; node < length && ownerOfElement_[to] == piece; ++node) {
                if (own[at + node] >= nodes_.countOf(piece))
                    throw FormatError(titleOf(dataset) + " names a node that is not there");
                words[starts[to] + node] = nodes_.rowOf(piece, own[at + node]);
            }
            at += length;
        }
        if (at != own.size())
            throw FormatError(titleOf(dataset) + " has more nodes than " + quoted(polylength) +
                              " says");
    }
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
