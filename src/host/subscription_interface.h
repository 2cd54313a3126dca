#pragma once

#include <string>

namespace wex {

// Subscriptions to the change events of a resource URI. The base does nothing.
class SubscriptionInterface {
  public:
    virtual void SubscribeToEvent(const std::string& uri);
    virtual void UnsubscribeFromEvent(const std::string& uri);

  protected:
    ~SubscriptionInterface() = default;
};

}  // namespace wex
