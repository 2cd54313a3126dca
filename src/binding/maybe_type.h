#pragma once

#include <optional>
#include <type_traits>
#include <utility>
#include <variant>

namespace wex {

// Holds either a value of T or an error of type Error, as the result of an
// operation that can fail:
//   MaybeType<Failure, Summoner> summoner = Request<Summoner>(...);
//   if (!summoner) return summoner.GetFailure();
//   Use(summoner.Value());
// Both convert implicitly into it. Taking what the result does not hold throws
// (std::bad_variant_access, or std::bad_optional_access for the error of a
// MaybeType<Error, void> that holds success).
template <class Error, class T>
class [[nodiscard]] MaybeType {
    static_assert(!std::is_same_v<Error, T>);

  public:
    MaybeType(T value) : state_(std::in_place_index<0>, std::move(value)) {}
    MaybeType(Error error) : state_(std::in_place_index<1>, std::move(error)) {}

    bool HasValue() const { return state_.index() == 0; }
    bool HasFailure() const { return state_.index() == 1; }
    explicit operator bool() const { return HasValue(); }

    T& Value() & { return std::get<0>(state_); }
    const T& Value() const& { return std::get<0>(state_); }
    T&& Value() && { return std::get<0>(std::move(state_)); }

    const Error& GetFailure() const& { return std::get<1>(state_); }
    Error&& GetFailure() && { return std::get<1>(std::move(state_)); }

  private:
    std::variant<T, Error> state_;
};

// Success, or an error of type Error.
template <class Error>
class [[nodiscard]] MaybeType<Error, void> {
  public:
    // Success.
    MaybeType() = default;
    MaybeType(Error error) : error_(std::move(error)) {}

    bool HasValue() const { return !error_.has_value(); }
    bool HasFailure() const { return error_.has_value(); }
    explicit operator bool() const { return HasValue(); }

    const Error& GetFailure() const& { return error_.value(); }
    Error&& GetFailure() && { return std::move(error_).value(); }

  private:
    std::optional<Error> error_;
};

}  // namespace wex
