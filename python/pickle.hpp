// Pickles of the library's values: the state of a struct is the tuple of its fields.
#pragma once

#include "knots/knot_type.hpp"
#include "polymer/residue_id.hpp"
#include "python/arrays.hpp"

#include <tuple>
#include <type_traits>

namespace loopwise::python {

/// Ties the fields of a struct, in the order of its pickles; a specialization for each struct.
template <class T> constexpr auto fields = nullptr;

template <class T>
concept HasFields = !std::is_same_v<decltype(fields<T>), const std::nullptr_t>;
template <class T>
concept IsPlain = std::is_arithmetic_v<T> || std::is_same_v<T, std::string>;

/// The state of a value in a pickle, and the value with this state. Here for what pybind11 converts by itself.
template <class T> struct Pickled {
    static py::object state(const T& value) { return py::cast(value); }
    static T value(const py::handle& state) { return state.cast<T>(); }
};

template <class T>
requires std::is_enum_v<T>
struct Pickled<T> {
    static py::object state(const T& value) { return py::int_(static_cast<int>(value)); }
    static T value(const py::handle& state) { return static_cast<T>(state.cast<int>()); }
};

template <HasFields T> struct Pickled<T> {
    static py::object state(const T& value) {
        const auto tuple = [](const auto&... field) -> py::object {
            return py::make_tuple(Pickled<std::decay_t<decltype(field)>>::state(field)...);
        };
        return std::apply(tuple, fields<T>(value));
    }
    static T value(const py::handle& state) {
        T value{};
        set(value, state.cast<py::tuple>());
        return value;
    }
    static void set(T& value, const py::tuple& states) {
        std::size_t i = 0;
        const auto set_all = [&](auto&... field) {
            ((field = Pickled<std::decay_t<decltype(field)>>::value(states[i++])), ...);
        };
        std::apply(set_all, fields<T>(value));
    }
};

template <class T>
requires(!IsPlain<T>) struct Pickled<std::vector<T>> {
    static py::object state(const std::vector<T>& values) {
        py::list states;
        for (const T& value : values) states.append(Pickled<T>::state(value));
        return states;
    }
    static std::vector<T> value(const py::handle& states) {
        std::vector<T> values;
        for (const py::handle state : states) values.push_back(Pickled<T>::value(state));
        return values;
    }
};

template <class T> struct Pickled<std::optional<T>> {
    static py::object state(const std::optional<T>& value) {
        return value ? Pickled<T>::state(*value) : py::none();
    }
    static std::optional<T> value(const py::handle& state) {
        return state.is_none() ? std::nullopt : std::optional(Pickled<T>::value(state));
    }
};

template <> struct Pickled<py::object> {
    static py::object state(const py::object& value) { return value; }
    static py::object value(const py::handle& state) { return state.cast<py::object>(); }
};

template <> struct Pickled<Chain> {
    static py::object state(const Chain& chain) { return arrays_of(chain); }
    static Chain value(const py::handle& state) {
        const auto [xyz, ids] = state.cast<std::pair<Doubles, Ids>>();
        return chain_of(xyz, ids);
    }
};

template <> struct Pickled<polymer::ResidueId> {
    static py::object state(const polymer::ResidueId& residue) { return py::str(residue.text()); }
    static polymer::ResidueId value(const py::handle& state) {
        return polymer::ResidueId::parse(state.cast<std::string>());
    }
};

/// For def() of the class of T.
template <class T> auto pickled() {
    return py::pickle([](const T& value) { return Pickled<T>::state(value); },
                      [](const py::object& state) { return Pickled<T>::value(state); });
}

template <>
constexpr auto fields<knots::PrimeKnot> =
    [](auto& k) { return std::tie(k.crossings, k.number, k.hand, k.loops); };
template <>
constexpr auto fields<knots::Laurent> = [](auto& p) { return std::tie(p.twice_lowest, p.coefficients); };
template <>
constexpr auto fields<knots::KnotType> = [](auto& k) {
    return std::tie(k.status, k.proven, k.candidates, k.loops, k.jones, k.crossings, k.fault);
};

inline std::string text_of(const knots::KnotType& type) { return text(type); }
inline std::vector<std::string> knot_texts(const std::vector<knots::KnotType>& types) {
    std::vector<std::string> texts;
    for (const knots::KnotType& type : types) texts.push_back(text(type));
    return texts;
}

} // namespace loopwise::python
