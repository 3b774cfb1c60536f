#pragma once

#include <string>

#include "session/session.h"

namespace session {

/// Opens the object server and a network in the way that the network interface's name asks for: none is
/// local, "Internet" (in these letters) is a lightweight client, any other name is a full client through that
/// interface. Another network that is open is closed once the new one is open, or before it where the remote
/// flag must change, which closes the object server.
///
/// Does nothing where that network is open already under exactly this name. Throws the platform's error; a
/// network that was closed for the new one then counts as not open.
void OpenNetwork(Session& session, const std::string& network_name, const std::string& interface_name);

/// Closes system and network, whatever they say, and forgets them.
void CloseNetwork(Session& session);

/// Closes network and object server and forgets them, so that calls that come in meanwhile may open others.
void CloseSession(Session& session);

/// Sets the remote flag, which an open object server takes only while it is closed for the moment; a network
/// that was open stays closed.
void SetRemote(Session& session, bool remote);

}  // namespace session
