// From an operation of the session to a method: its arguments from parameters, its outputs into
// the result.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>

#include "session/i_multi_registrator.h"
#include "workbench/rpc/methods.h"

namespace tiepoint::workbench {

/// The parameter that an input argument is read from. A text is a name unless it is a path.
struct Input {
  Input(const char* parameter_, bool isPath_ = false) : parameter(parameter_), isPath(isPath_) {}

  const char* parameter;
  bool isPath;
};

inline Input path(const char* parameter) { return {parameter, true}; }

template <class... Names>
std::array<Input, sizeof...(Names)> in(Names... names) {
  return {{Input(names)...}};
}

/// The members of the result: first what the operation returns, if anything, then its outputs.
template <class... Names>
std::array<const char*, sizeof...(Names)> out(Names... names) {
  return {{names...}};
}

template <class Argument>
inline constexpr bool isOutput =
    std::is_lvalue_reference_v<Argument> && !std::is_const_v<std::remove_reference_t<Argument>>;

template <class Value>
Value readInput(const Parameters& parameters, const Input& input) {
  if constexpr (std::is_same_v<Value, bool>) {
    return parameters.flag(input.parameter);
  } else if constexpr (std::is_same_v<Value, double>) {
    return parameters.number(input.parameter);
  } else if constexpr (std::is_same_v<Value, std::uint64_t>) {
    return parameters.whole(input.parameter);
  } else if constexpr (std::is_same_v<Value, std::string>) {
    return input.isPath ? parameters.path(input.parameter) : parameters.name(input.parameter);
  } else {
    return parameters.ids(input.parameter);
  }
}

/// The members of the result for what an operation gives back in its arguments; `first` is the
/// place of the first output among the arguments.
template <std::size_t first, class Values, class Members, std::size_t... index>
void addOutputs(OrderedJson& result, const Values& values, const Members& members, std::index_sequence<index...>) {
  constexpr std::size_t returned = std::tuple_size_v<Members> - sizeof...(index);
  (addMember(result, members[returned + index], toJson(std::get<first + index>(values))), ...);
}

template <class Values, class Inputs, std::size_t... index>
void readInputs(Values& values, const Parameters& parameters, const Inputs& inputs, std::index_sequence<index...>) {
  ((std::get<index>(values) = readInput<std::tuple_element_t<index, Values>>(parameters, inputs[index])), ...);
}

/// The method of one operation, whose inputs stand before its outputs. It runs inside a
/// transaction: when the operation throws, the drawing is as it was before.
template <class Result, class... Arguments, std::size_t inputCount, std::size_t memberCount>
Method operation(Result (ZOR::reg::iMultiRegistrator::*call)(Arguments...), std::array<Input, inputCount> inputs,
                 std::array<const char*, memberCount> members) {
  constexpr std::size_t outputCount = (std::size_t{0} + ... + std::size_t{isOutput<Arguments>});
  static_assert(inputCount + outputCount == sizeof...(Arguments), "a parameter for each input");
  static_assert(memberCount == outputCount + (std::is_void_v<Result> ? 0 : 1), "a member for each output");

  Method method;
  for (const Input& input : inputs) method.parameters.emplace_back(input.parameter);
  method.parameters.emplace_back("session");
  method.run = [=](RpcContext& context, const Parameters& parameters) {
    ZOR::reg::iMultiRegistrator& session = sessionOf(context, parameters);
    std::tuple<std::decay_t<Arguments>...> values;
    readInputs(values, parameters, inputs, std::make_index_sequence<inputCount>());
    OrderedJson result = OrderedJson::object();
    context.workbench.inTransaction([&] {
      const auto run = [&](auto&... value) { return (session.*call)(value...); };
      if constexpr (std::is_void_v<Result>) {
        std::apply(run, values);
      } else {
        addMember(result, members[0], toJson(std::apply(run, values)));
      }
    });
    addOutputs<inputCount>(result, values, members, std::make_index_sequence<outputCount>());
    return result;
  };
  return method;
}

}  // namespace tiepoint::workbench
