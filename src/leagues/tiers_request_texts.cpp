#include "leagues/tiers_request_texts.h"

#include "leagues/server_mappings.h"

namespace Orvel::Client::Leagues {

namespace {

template <class T, class ItemText>
std::string BracketedList(const std::vector<T>& items, ItemText itemText) {
    std::string text = "[";
    for (std::size_t index = 0; index < items.size(); ++index) {
        if (index != 0) {
            text += ',';
        }
        text += itemText(items[index]);
    }
    text += ']';
    return text;
}

}  // namespace

std::string ParticipantIdListText(const std::vector<std::uint64_t>& summonerIds) {
    return BracketedList(summonerIds, [](std::uint64_t id) { return std::to_string(id); });
}

std::string QueueListText(const std::vector<Api::LeagueQueueType>& queueTypes) {
    return BracketedList(queueTypes,
                         [](Api::LeagueQueueType queue) { return '"' + std::string(QueueServerName(queue)) + '"'; });
}

}  // namespace Orvel::Client::Leagues
