#pragma once

#include <QString>

class PxHost;

// Connects at start to what the command line names, through the same connection widgets and the
// same checks as "Connect...": "sim" (the built-in simulated sensor), "tcp://HOST:PORT", or
// "none". A failure is shown over the host in the widget's own words and leaves nothing connected.
// Returns whether a device is connected afterwards.
bool ConnectAtStart(PxHost& aHost, const QString& aTarget);
