#pragma once

#include <QLoggingCategory>

// Diagnostics of the simulated sensor and its server.
Q_DECLARE_LOGGING_CATEGORY(lcSim)
