#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <span>
#include <tuple>
#include <type_traits>
#include <utility>

#include "api/api_handler.h"
#include "binding/failure.h"
#include "binding/maybe_type.h"
#include "types/native_conversion.h"
#include "types/native_kind.h"
#include "types/type_info.h"

namespace wex {

// A handler's failure: its message fails the call's result, its code is the status.
inline void StoreFailure(ApiCallContext& call, const Failure& failure) {
    call.status = static_cast<std::uint32_t>(failure.Code());
    call.result.SetError(failure.Message());
}

// A whole response: status, headers, body text and producer move into the call.
inline void StoreResponse(ApiCallContext& call, ApiResponse&& response) {
    call.status = response.status;
    call.headers = std::move(response.headers);
    call.text = std::move(response.text);
    call.producer = std::move(response.producer);
}

// The answers a handler may give, with their type and how they reach the
// call context: MaybeType<Failure, T>, MaybeType<Failure, void>, ApiResponse.
template <class Answer>
struct ApiAnswer {
    static_assert(kAlwaysFalse<Answer>, "a handler answers MaybeType<Failure, T> or ApiResponse");
};

template <class T>
struct ApiAnswer<MaybeType<Failure, T>> {
    static BindingTypeIdentifier Type() { return TypeIdentifierOf<T>(); }
    static const BindingTypeIdentity& Identity() { return BindingTypeIdentity::Of<T>(); }
    static void Store(ApiCallContext& call, MaybeType<Failure, T>&& answer) {
        if (answer.HasFailure()) {
            StoreFailure(call, answer.GetFailure());
        } else {
            ToBinding(call.result, answer.Value(), *call.function.registry);
        }
    }
};

template <>
struct ApiAnswer<MaybeType<Failure, void>> {
    static BindingTypeIdentifier Type() { return {}; }
    static const BindingTypeIdentity& Identity() { return BindingTypeIdentity::Of<void>(); }
    static void Store(ApiCallContext& call, MaybeType<Failure, void>&& answer) {
        if (answer.HasFailure()) {
            StoreFailure(call, answer.GetFailure());
        }
    }
};

template <>
struct ApiAnswer<ApiResponse> {
    static BindingTypeIdentifier Type() { return {BindingTypeKind::Struct, BindingTypeKind::None, &Identity()}; }
    static const BindingTypeIdentity& Identity() { return BindingTypeIdentity::Of<ApiResponse>(); }
    static void Store(ApiCallContext& call, ApiResponse&& answer) { StoreResponse(call, std::move(answer)); }
};

// The native arguments of a handler: its parameters by value, without the
// request summary that handlers answering ApiResponse take first.
template <class Answer, class... Params>
struct NativeArgumentsOf {
    using type = std::tuple<std::decay_t<Params>...>;
};
template <class... Params>
struct NativeArgumentsOf<ApiResponse, const ApiRequestSummary&, Params...> {
    using type = std::tuple<std::decay_t<Params>...>;
};

// An ApiFunctionHandler around a plain C++ function whose parameters are
// native types converted by the binding converters, named in messages by the
// route's argument names.
template <class Answer, class... Params>
class NativeApiFunctionHandler final : public ApiFunctionHandler {
    using Native = typename NativeArgumentsOf<Answer, Params...>::type;
    static constexpr bool kTakesSummary = std::is_same_v<Answer, ApiResponse>;
    static_assert(!kTakesSummary || std::tuple_size_v<Native> + 1 == sizeof...(Params),
                  "a handler answering ApiResponse takes const ApiRequestSummary& first");

  public:
    explicit NativeApiFunctionHandler(std::function<Answer(Params...)> function) : function_(std::move(function)) {}

    void* ConvertArguments(ApiCallContext& call, std::span<const BindingProperty> slots,
                           std::uint32_t /*context*/) const override {
        auto native = std::make_unique<Native>();
        ConvertEach(call, slots, *native, std::make_index_sequence<std::tuple_size_v<Native>>());
        return native.release();
    }

    void Invoke(ApiCallContext& call, const ApiRequestSummary* summary, void* arguments,
                std::uint32_t /*context*/) const override {
        Native& native = *static_cast<Native*>(arguments);
        if constexpr (kTakesSummary) {
            const ApiRequestSummary none;
            const ApiRequestSummary& given = summary != nullptr ? *summary : none;
            ApiAnswer<Answer>::Store(
                call, std::apply([&](auto&... values) { return function_(given, std::move(values)...); }, native));
        } else {
            ApiAnswer<Answer>::Store(
                call, std::apply([&](auto&... values) { return function_(std::move(values)...); }, native));
        }
    }

    void ReleaseArguments(void* arguments) const override { delete static_cast<Native*>(arguments); }

    void Describe(BindingFunctionInfo& function) const override {
        DescribeEach(function, std::make_index_sequence<std::tuple_size_v<Native>>());
        function.result = ApiAnswer<Answer>::Type();
    }

    const BindingTypeIdentity& ResultType() const override { return ApiAnswer<Answer>::Identity(); }

  private:
    template <std::size_t... Index>
    static void ConvertEach([[maybe_unused]] ApiCallContext& call,
                            [[maybe_unused]] std::span<const BindingProperty> slots, [[maybe_unused]] Native& native,
                            std::index_sequence<Index...>) {
        (ConvertOne(call, slots, Index, std::get<Index>(native)), ...);
    }

    template <class T>
    static void ConvertOne(ApiCallContext& call, std::span<const BindingProperty> slots, std::size_t index, T& out) {
        if (index < slots.size()) {
            FromBinding(call.result, out, slots[index], call.function.arguments[index].name, *call.function.registry);
        }
    }

    template <std::size_t... Index>
    static void DescribeEach([[maybe_unused]] BindingFunctionInfo& function, std::index_sequence<Index...>) {
        if (function.arguments.size() < sizeof...(Index)) {
            function.arguments.resize(sizeof...(Index));
        }
        ((function.arguments[Index].type = TypeIdentifierOf<std::tuple_element_t<Index, Native>>()), ...);
    }

    std::function<Answer(Params...)> function_;
};

template <class Callable>
struct CallableSignature : CallableSignature<decltype(&Callable::operator())> {};
template <class Class, class Answer, class... Params>
struct CallableSignature<Answer (Class::*)(Params...) const> {
    using Handler = NativeApiFunctionHandler<Answer, Params...>;
};
template <class Class, class Answer, class... Params>
struct CallableSignature<Answer (Class::*)(Params...)> {
    using Handler = NativeApiFunctionHandler<Answer, Params...>;
};

// The handler of a callable (a lambda or function object).
template <class Callable>
std::shared_ptr<const ApiFunctionHandler> MakeApiHandler(Callable callable) {
    using Handler = typename CallableSignature<Callable>::Handler;
    return std::make_shared<const Handler>(std::move(callable));
}

// The handler of a member function, called on object, which outlives it.
template <class Object, class Owner, class Answer, class... Params>
std::shared_ptr<const ApiFunctionHandler> MakeApiHandler(Object& object, Answer (Owner::*member)(Params...)) {
    auto& owner = static_cast<Owner&>(object);
    return std::make_shared<const NativeApiFunctionHandler<Answer, Params...>>(
        [&owner, member](Params... values) { return (owner.*member)(std::forward<Params>(values)...); });
}

template <class Object, class Owner, class Answer, class... Params>
std::shared_ptr<const ApiFunctionHandler> MakeApiHandler(Object& object, Answer (Owner::*member)(Params...) const) {
    const auto& owner = static_cast<const Owner&>(object);
    return std::make_shared<const NativeApiFunctionHandler<Answer, Params...>>(
        [&owner, member](Params... values) { return (owner.*member)(std::forward<Params>(values)...); });
}

}  // namespace wex
