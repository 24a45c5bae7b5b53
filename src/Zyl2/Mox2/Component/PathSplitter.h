#ifndef ZYL2_MOX2_COMPONENT_PATHSPLITTER_H
#define ZYL2_MOX2_COMPONENT_PATHSPLITTER_H

#include <cstddef>
#include <iterator>
#include <string>
#include <string_view>

namespace Zyl2 {
namespace Mox2 {
namespace Component {

/// Cuts a path into its names. Looks at the path and the separator, which have to outlive it.
class PathSplitter
{
public:
    class Iterator
    {
    public:
        using iterator_category = std::forward_iterator_tag;
        using value_type = std::string_view;
        using difference_type = std::ptrdiff_t;
        using pointer = std::string_view const*;
        using reference = std::string_view const&;

        Iterator() = default;
        /// \param rest what is behind the last name that was taken
        Iterator(std::string_view rest, std::string_view separators);

        reference operator*() const { return name_; }
        pointer operator->() const { return &name_; }
        Iterator& operator++();
        Iterator operator++(int);
        /// For iterators over the same path.
        friend bool operator==(Iterator const& left, Iterator const& right)
        {
            return left.name_.data() == right.name_.data();
        }
        friend bool operator!=(Iterator const& left, Iterator const& right)
        {
            return !(left == right);
        }

    private:
        /// The current name; a view without data when there are no more names.
        std::string_view name_;
        std::string_view rest_;
        std::string_view separators_;
    };

    /// \param separator each of its characters separates names; runs of them count once
    PathSplitter(std::string const& path, char const* separator);
    PathSplitter(std::string const&& path, char const* separator) = delete;
    PathSplitter(PathSplitter const&) = delete;
    PathSplitter& operator=(PathSplitter const&) = delete;
    virtual ~PathSplitter();

    Iterator begin() const { return {path_, separators_}; }
    Iterator end() const { return {}; }

private:
    std::string_view path_;
    std::string_view separators_;
};

} // namespace Component
} // namespace Mox2
} // namespace Zyl2

#endif
