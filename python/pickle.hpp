// The library's values as plain Python ones, for pickles and plots: a struct becomes the tuple of its fields.
#pragma once

#include "knots/invariants.hpp"
#include "knots/knot_type.hpp"
#include "polymer/residue_id.hpp"
#include "python/arrays.hpp"

#include <tuple>
#include <type_traits>

namespace loopwise::python {

/// Ties the fields of a struct; a specialization for each struct.
template <class T> constexpr auto fields = nullptr;
/// Two functions, to and from what stands for a value in Python; a specialization for types without fields.
template <class T> constexpr auto converters = nullptr;

template <class T, template <class...> class Template> constexpr bool is_a = false;
template <template <class...> class Template, class... T> constexpr bool is_a<Template<T...>, Template> = true;
template <class T> constexpr bool has_fields = !std::is_null_pointer_v<decltype(fields<T>)>;
template <class T> constexpr bool has_converters = !std::is_null_pointer_v<decltype(converters<T>)>;

template <class T> py::object plain(const T& value) {
    if constexpr (has_fields<T>) {
        const auto tuple = [](const auto&... field) { return py::make_tuple(plain(field)...); };
        return std::apply(tuple, fields<T>(value));
    } else if constexpr (has_converters<T>)
        return plain(converters<T>.first(value));
    else if constexpr (is_a<T, std::optional>)
        return value ? plain(*value) : py::none();
    else if constexpr (is_a<T, std::vector>) {
        py::list list;
        for (const auto& one : value) list.append(plain(one));
        return list;
    } else if constexpr (std::is_same_v<T, knots::InvariantValue>)
        return std::visit([](const auto& one) { return plain(one); }, value);
    else if constexpr (std::is_enum_v<T>)
        return py::int_(static_cast<int>(value));
    else if constexpr (std::is_base_of_v<py::object, T>)
        return value;
    else
        return py::cast(value);
}

template <class T> void set(T& value, const py::handle& plain) {
    if constexpr (has_fields<T>) {
        auto set_all = [states = plain.cast<py::tuple>(), i = std::size_t{0}](auto&... to) mutable {
            (set(to, states[i++]), ...);
        };
        std::apply(set_all, fields<T>(value));
    } else if constexpr (has_converters<T>) {
        std::decay_t<decltype(converters<T>.first(value))> converted{};
        set(converted, plain);
        value = converters<T>.second(converted);
    } else if constexpr (is_a<T, std::optional>) {
        // Not emplace(), which clang 14 refuses for nested structs.
        if (!plain.is_none()) set(*(value = typename T::value_type{}), plain);
    } else if constexpr (is_a<T, std::vector>) {
        for (const py::handle one : plain) {
            typename T::value_type element{};
            set(element, one);
            value.push_back(std::move(element));
        }
    } else if constexpr (std::is_same_v<T, knots::InvariantValue>) {
        if (py::isinstance<py::int_>(plain))
            value = plain.cast<std::int64_t>();
        else
            set(value.template emplace<knots::Laurent>(), plain);
    } else if constexpr (std::is_enum_v<T>)
        value = static_cast<T>(plain.cast<int>());
    else
        value = plain.cast<T>();
}

/// For def() of the class of T.
template <class T> auto pickled() {
    return py::pickle(&plain<T>, [](const py::object& state) {
        T value{};
        set(value, state);
        return value;
    });
}

template <> constexpr auto fields<ChainAtom> = [](auto& a) { return std::tie(a.x, a.y, a.z, a.id); };
template <>
constexpr auto fields<knots::PrimeKnot> = [](auto& k) { return std::tie(k.crossings, k.number, k.hand, k.loops); };
template <> constexpr auto fields<knots::Laurent> = [](auto& p) { return std::tie(p.twice_lowest, p.coefficients); };
template <>
constexpr auto fields<knots::KnotType> =
    [](auto& k) { return std::tie(k.status, k.proven, k.candidates, k.loops, k.jones, k.crossings, k.fault); };
template <>
constexpr auto converters<polymer::ResidueId> =
    std::pair([](const polymer::ResidueId& residue) { return residue.text(); }, &polymer::ResidueId::parse);

inline std::string text_of(const knots::KnotType& type) { return text(type); }
inline std::vector<std::string> knot_texts(const std::vector<knots::KnotType>& types) {
    std::vector<std::string> texts;
    for (const knots::KnotType& type : types) texts.push_back(text(type));
    return texts;
}

/// Adds to a class of values that have a knot what it is.
template <class Bound, class Get> void bind_type(Bound& bound, const Get& type) {
    const Property property{bound};
    using Value = typename Bound::type;
    property("type", "The knot as a value to compare and to count.", type);
    property("knot", "The knot as text, see :class:`KnotType`.", [type](const Value& v) { return text(type(v)); });
    property("proven", "Whether the knot is proven, see :class:`KnotType`.",
             [type](const Value& v) { return type(v).proven; });
}

} // namespace loopwise::python
