#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "binding/failure.h"
#include "binding/maybe_type.h"
#include "leagues/api_types.h"
#include "leagues/server_dtos.h"

namespace Orvel::Client::Leagues {

// The phases from the ready check to the end of a game, during which new
// notifications wait: ReadyCheck to PreEndOfGame.
extern const std::set<Api::GameflowPhase> HeldBackPhases;

// Whether notifications may show in a phase: in every phase outside HeldBackPhases.
bool NotificationsAllowedIn(Api::GameflowPhase phase);

// A record can sit in two containers of the store at once, and outlives them
// while an acknowledgement waits for the server.
using SharedNotification = std::shared_ptr<Api::LeagueNotificationResource>;

// Acknowledges one stored message on the server; false when that failed. It
// may yield to the host, so the store can change while it runs.
using ServerAcknowledgement = std::function<bool(std::uint64_t accountId, const std::string& msgId)>;

// The player's league notifications: server notifications filed from league
// messages, the system messages derived from them, the decay and
// demotion-shield warnings built from the standings, and the gating state.
// While notifications are held back, new records wait in pending containers
// and are released in order once they are allowed again. Every record takes
// the next id; ids are never reused. [host-thread]
class LeagueNotificationStore {
  public:
    // Files a leagues message as a server notification, with the system
    // message it derives; false, filing nothing, for any other message.
    bool AddLeagueMessage(const Api::SimpleMessage& message);
    // Files the leagues messages of the login data packet, deriving nothing,
    // and acknowledges the LEAGUE_POINTS_UPDATE and NOT_YET_SEEDED ones on the
    // server at once, whatever the answer. [may yield]
    void AddLoginMessages(const std::vector<Api::SimpleMessage>& simpleMessages,
                          const ServerAcknowledgement& acknowledgeOnServer);
    // Outside BRONZE: a MINISERIES_CANCEL record becomes a series-ended
    // message too (priority 1100); a LEAGUE_DEMOTED record by decay gets a
    // copy with its own id as the decay-demotion message (priority 1200).
    void DeriveSystemMessages(const SharedNotification& record);

    // Copies of the shown records: the server notifications in ascending id
    // order, then the derived messages, the decay warnings and the
    // demotion-shield warnings, each in its own order.
    std::vector<Api::LeagueNotificationResource> GetNotifications() const;

    // Changes the gating state; on allowing, the pending records move to the
    // shown containers in order. True exactly when notifications have just
    // become allowed.
    bool SetNotificationsAllowed(bool allowed);
    // Marks the shown record of an id acknowledged by the player, after
    // acknowledging its server message when it has one. The server
    // notifications are looked up first, and a refusal there fails at once;
    // then the derived messages, decay warnings and demotion-shield warnings
    // in turn, a refusal going on with the next list. Pending records are not
    // searched. Fails with 403 and "Unable to delete notification with id
    // <id>. Either notification is acknowledged or it is not an
    // acknowledgeable notification" when no record was marked. [may yield]
    wex::MaybeType<wex::Failure, void> AcknowledgeNotification(std::uint64_t id, std::uint64_t accountId,
                                                               const ServerAcknowledgement& acknowledgeOnServer);

    // Rebuilds the decay warnings (shown or pending as the gating state
    // says) from the player's league entries, then the demotion-shield warnings.
    void UpdateDecayWarnings(const std::vector<LCDS::LeagueItemDTO>& entries);
    // Rebuilds the demotion-shield warnings of levels 1 and 2; every entry
    // uses up an id, whether it gives a warning or not.
    void UpdateDemotionShieldWarnings(const std::vector<LCDS::LeagueItemDTO>& entries);
    // A new system message about one league entry.
    SharedNotification MakeStandingMessage(const LCDS::LeagueItemDTO& entry, std::string_view type,
                                           std::string_view titleType, std::uint64_t priority);

    // Kept from the season-reward configuration; no rule reads it yet.
    void SetQualificationWarningEnabled(bool enabled) { qualificationWarningEnabled = enabled; }
    bool QualificationWarningEnabled() const { return qualificationWarningEnabled; }

  private:
    using Records = std::vector<SharedNotification>;

    // A record with its initial values and the next id.
    SharedNotification NewRecord();
    // A new record of a leagues message.
    SharedNotification MakeMessageRecord(const Api::SimpleMessage& message);
    // Enters a server notification in the shown map, or the pending list while held back.
    void File(const SharedNotification& record);

    Records derivedMessages;
    Records decayWarnings;
    Records demotionShieldWarnings;
    Records pendingDerivedMessages;
    Records pendingDecayWarnings;
    Records pendingDemotionShieldWarnings;
    std::unordered_map<std::uint64_t, SharedNotification> notificationsById;
    Records pendingNotifications;
    std::uint64_t nextId = 0;
    bool qualificationWarningEnabled = false;
    bool notificationsAllowed = true;
};

}  // namespace Orvel::Client::Leagues
