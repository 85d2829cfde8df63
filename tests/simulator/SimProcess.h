#pragma once

#include "PxTest.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QStringList>

#include <csignal>

// parvex-sim in a child process on an ephemeral port.
class SimProcess
{
public:
  explicit SimProcess(const QStringList& aArguments = {QStringLiteral("--no-state")})
  {
    mProcess.start(QStringLiteral(PARVEX_SIM_PROGRAM),
                   QStringList{QStringLiteral("--port"), QStringLiteral("0")} << aArguments);
    QByteArray lOutput;
    QElapsedTimer lClock;
    lClock.start();
    while (!lOutput.contains('\n') && lClock.elapsed() < PxTest::WAIT_MS &&
           mProcess.waitForReadyRead(PxTest::WAIT_MS)) {
      lOutput += mProcess.readAllStandardOutput();
    }
    const QByteArray lPrefix("listening on 127.0.0.1:");
    if (lOutput.startsWith(lPrefix)) {
      mPort = static_cast<quint16>(lOutput.mid(lPrefix.size()).trimmed().toUInt());
    }
  }
  ~SimProcess() { Stop(SIGTERM); }

  // Stops with a signal; true when it exited by itself with code 0.
  bool Stop(int aSignal)
  {
    if (mProcess.state() == QProcess::NotRunning) {
      return mProcess.exitStatus() == QProcess::NormalExit && mProcess.exitCode() == 0;
    }
    ::kill(static_cast<pid_t>(mProcess.processId()), aSignal);
    if (!mProcess.waitForFinished(PxTest::WAIT_MS)) {
      mProcess.kill();
      mProcess.waitForFinished();
      return false;
    }
    return mProcess.exitStatus() == QProcess::NormalExit && mProcess.exitCode() == 0;
  }

  quint16 Port() const { return mPort; }

private:
  QProcess mProcess;
  quint16 mPort = 0;
};
