#include "host_session.h"

#include <algorithm>

#include "method_text.h"

namespace tav::host {

HostSession::HostSession(std::shared_ptr<const LeagueWorld> world)
    : world_(std::move(world)), server_(world_), platform_(host_, *world_) {
    host_.SetServerResponder(
        [this](std::string_view destination, std::string_view method, const wex::BindingProperty& arguments) {
            return server_.Answer(destination, method, arguments);
        });
}

bool HostSession::Start(const std::string& pluginPath, const CoreVersion& version) {
    if (!library_.Open(pluginPath) || !library_.Load(version)) {
        error_ = library_.error();
        return false;
    }
    platform_.SetUp();
    if (!host_.Start(library_)) {
        error_ = "the plug-in's Start returned false";
        host_.Stop(library_);
        return false;
    }
    started_ = true;
    // The player logs in once the plug-ins are up, as in the client.
    if (world_->platform.loggedIn) {
        platform_.LogIn();
    }
    host_.RunUntilIdle();
    return true;
}

void HostSession::Stop() {
    if (started_) {
        host_.Stop(library_);
        started_ = false;
    }
}

HttpAnswer HostSession::CallRoute(std::string_view method, const std::string& pathWithQuery, const std::string& body,
                                  const std::string& contentType) {
    if (!started_) {
        return HttpAnswer::Failure(503, "The plug-in is not running");
    }
    const std::string path = pathWithQuery.substr(0, pathWithQuery.find('?'));
    const std::vector<std::string> allowed = host_.AllowedMethods(path);
    if (!allowed.empty() && std::find(allowed.begin(), allowed.end(), method) == allowed.end()) {
        return HttpAnswer::NotAllowed(method, path, allowed);
    }
    return RouteHttpAnswer(host_.CallEndpoint(MethodCode(method), pathWithQuery, body, contentType));
}

}  // namespace tav::host
