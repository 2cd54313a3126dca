#pragma once

#include <utility>

#include "api/api_call_context.h"
#include "api/api_response.h"
#include "binding/failure.h"
#include "binding/maybe_type.h"
#include "types/native_conversion.h"
#include "types/native_kind.h"
#include "types/type_info.h"

namespace wex {

// A handler's failure: its message fails the call's result, its code is the status.
void StoreFailure(ApiCallContext& call, const Failure& failure);
// A whole response: status, headers, body text and producer move into the call.
void StoreResponse(ApiCallContext& call, ApiResponse&& response);

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

}  // namespace wex
