#ifndef BINDINGS_C_HANDLE_H
#define BINDINGS_C_HANDLE_H

#include <moxwriter.h>

#include <Zyl2/Mox2/Attributes.h>
#include <Zyl2/Mox2/NodeProperties.h>
#include <Zyl2/Mox2/SaverOptions.h>
#include <Zyl2/Mox2/Step.h>

#include "Failure.h"
#include "model/FileCalls.h"

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

namespace Zyl2 {
namespace C {

/// What the pointer of a handle of any type points to. It stays readable when the handle was
/// destroyed, so that a call with that handle can be refused.
struct Shell
{
    /// Unlikely values of other memory.
    enum class Kind : std::uint64_t
    {
        None = 0,
        Model = 0x6C65646F4D786F4D,
        Options = 0x6F6974704F786F4D,
        Attributes = 0x6972747441786F4D,
        Properties = 0x7065706F50786F4D,
        Steps = 0x7370657453786F4D
    };

    Kind kind = Kind::None;
    void* content = nullptr;
    Shell* nextUnused = nullptr;

    /// One that was used before, or a new one.
    static Shell* take(Kind kind, void* content);
    /// Keeps it for the next that takes one.
    static void giveBack(Shell* shell) noexcept;
};

struct ModelContent
{
    ModelContent() : model(std::make_unique<Bindings::FileCalls>()) {}
    explicit ModelContent(std::unique_ptr<Bindings::ModelCalls> other) : model(std::move(other)) {}

    std::unique_ptr<Bindings::ModelCalls> model;
    ErrorText error;
};

/// What is behind a handle of each type, and what failures call it.
template <typename HandleT>
struct Handled;
template <>
struct Handled<mox_model>
{
    using Content = ModelContent;
    static constexpr Shell::Kind kind = Shell::Kind::Model;
    static constexpr char const* name = "model";
};
template <>
struct Handled<mox_options>
{
    using Content = Mox2::SaverOptions;
    static constexpr Shell::Kind kind = Shell::Kind::Options;
    static constexpr char const* name = "set of options";
};
template <>
struct Handled<mox_attributes>
{
    using Content = Mox2::Attributes;
    static constexpr Shell::Kind kind = Shell::Kind::Attributes;
    static constexpr char const* name = "set of attributes";
};
template <>
struct Handled<mox_properties>
{
    using Content = Mox2::NodeProperties;
    static constexpr Shell::Kind kind = Shell::Kind::Properties;
    static constexpr char const* name = "set of properties";
};
template <>
struct Handled<mox_steps>
{
    using Content = std::vector<Mox2::Step>;
    static constexpr Shell::Kind kind = Shell::Kind::Steps;
    static constexpr char const* name = "list of steps";
};

template <typename HandleT>
using ContentOf = typename Handled<HandleT>::Content;

/// \return null unless the handle is one of its type
template <typename HandleT>
ContentOf<HandleT>* findContent(HandleT const* handle) noexcept
{
    auto const* const shell = reinterpret_cast<Shell const*>(handle);
    bool const isOne = shell != nullptr && shell->kind == Handled<HandleT>::kind;
    return isOne ? static_cast<ContentOf<HandleT>*>(shell->content) : nullptr;
}

/// \throws InvalidHandle null, of another type, or destroyed
template <typename HandleT>
ContentOf<HandleT>& contentOf(HandleT* handle)
{
    auto* const content = findContent(handle);
    if (content == nullptr)
        throw InvalidHandle(Handled<HandleT>::name, handle == nullptr);
    return *content;
}

/// The same for a handle that the call doesn't change.
template <typename HandleT>
ContentOf<HandleT> const& contentOf(HandleT const* handle)
{
    return contentOf(const_cast<HandleT*>(handle));
}

/// The same for a handle that may be null.
/// \param otherwise what null stands for
template <typename HandleT>
ContentOf<HandleT> const& contentOr(HandleT const* handle, ContentOf<HandleT> const& otherwise)
{
    return handle == nullptr ? otherwise : contentOf(handle);
}

/// \param handle receives the new one, or null
/// \param make   makes its content
template <typename HandleT, typename Make>
mox_status create(HandleT** handle, Make const& make) noexcept
{
    return guarded([&] {
        if (handle == nullptr)
            refuse(Exception::sentence("nothing to return the ", Handled<HandleT>::name, " in"));
        *handle = nullptr;
        std::unique_ptr<ContentOf<HandleT>> content = make();
        Shell* const shell = Shell::take(Handled<HandleT>::kind, content.get());
        content.release(); // NOLINT(bugprone-unused-return-value): the shell has it
        *handle = reinterpret_cast<HandleT*>(shell);
    });
}

template <typename HandleT>
mox_status create(HandleT** handle) noexcept
{
    return create(handle, [] { return std::make_unique<ContentOf<HandleT>>(); });
}

template <typename HandleT>
mox_status destroy(HandleT* handle) noexcept
{
    if (handle == nullptr)
        return MOX_OK;
    return guarded([=] {
        std::unique_ptr<ContentOf<HandleT>> const content(&contentOf(handle));
        Shell::giveBack(reinterpret_cast<Shell*>(handle));
    });
}

} // namespace C
} // namespace Zyl2

#endif
