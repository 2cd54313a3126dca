#include "host/subscription_interface.h"

namespace wex {

void SubscriptionInterface::SubscribeToEvent(const std::string& /*uri*/) {}

void SubscriptionInterface::UnsubscribeFromEvent(const std::string& /*uri*/) {}

}  // namespace wex
