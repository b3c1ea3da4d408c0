#include "remote/RemoteTcpListener.h"

namespace orvane {

void RemoteTcpListener::incomingConnection(qintptr descriptor) { emit descriptorAccepted(descriptor); }

}  // namespace orvane
