#pragma once

#include <QStringList>

// The verbs of parvex-cli; each takes its arguments with the verb first and returns the exit code.
namespace PxCli {
int RunConnections(const QStringList& aArguments);
int RunInfo(const QStringList& aArguments);
int RunConfig(const QStringList& aArguments);
int RunReset(const QStringList& aArguments);
int RunFirmware(const QStringList& aArguments);
int RunRecord(const QStringList& aArguments);
int RunLog(const QStringList& aArguments);
int RunInspect(const QStringList& aArguments);
int RunExtract(const QStringList& aArguments);
int RunExport(const QStringList& aArguments);
} // namespace PxCli
