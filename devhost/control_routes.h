#pragma once

#include <string>
#include <string_view>

#include "host_session.h"
#include "http_answer.h"

namespace tav::host {

// tav-host's own routes, under /devhost/, served on the host's thread:
//   GET    /devhost/api                       the plug-in's routes, types and events
//   POST   /devhost/login, /devhost/logout    the current player's session
//   PUT    /devhost/gameflow                  {"phase": "ChampSelect", "queue": "RANKED_SOLO_5x5"}
//   DELETE /devhost/gameflow
//   PUT    /devhost/switches/NAME             true or false; NAME leagueServiceEnabled or JWTEnabled
//   GET|PUT|DELETE /devhost/resources/URI     any resource of the other plug-ins, as JSON
//   POST   /devhost/messages                  {"typeName": ..., "body": {...}} pushed by the server;
//                                             the type defaults to the league message class, and
//                                             params given as objects travel as their JSON text
//   POST   /devhost/clock                     {"seconds": 60} moves the scheduler's clock on (at most a day)
//   PUT    /devhost/next-token-expiry         {"seconds": 30}: the next signed standings expire so soon
//   GET|DELETE /devhost/journal               the host calls and server calls of the plug-in, or forget them
//   GET    /devhost/log                       the log lines forwarded to the host
//   GET    /devhost/memory                    the plug-in's memory counters
//   GET|DELETE /devhost/faults                the faults set, or clear them all
//   PUT    /devhost/faults/DESTINATION/METHOD {"error", "status", "delaySeconds", "className", "malformed"}
// Anything else under /devhost/ answers 404.
HttpAnswer ServeControl(HostSession& session, std::string_view method, const std::string& path,
                        const std::string& body);

constexpr std::string_view kControlPrefix = "/devhost/";

}  // namespace tav::host
