#include "api/api_answer.h"

namespace wex {

void StoreFailure(ApiCallContext& call, const Failure& failure) {
    call.status = static_cast<std::uint32_t>(failure.Code());
    call.result.SetError(failure.Message());
}

void StoreResponse(ApiCallContext& call, ApiResponse&& response) {
    call.status = response.status;
    call.headers = std::move(response.headers);
    call.text = std::move(response.text);
    call.producer = std::move(response.producer);
}

}  // namespace wex
