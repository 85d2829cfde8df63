#pragma once

// The start every benchmark of windows and forms shares: the offscreen platform unless the caller
// chose one, a QApplication, and settings kept in a temporary folder so that a run neither reads
// nor changes the user's. aPrepare runs once the application exists, before the benchmarks.

#include <QApplication>
#include <QCoreApplication>
#include <QSettings>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <functional>

inline int PxBenchRunWithUi(int& argc, char** argv, const std::function<void()>& aPrepare = {})
{
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
  }
  QApplication lApp(argc, argv);
  QCoreApplication::setOrganizationName(QStringLiteral("ParvexBench"));
  QTemporaryDir lSettings;
  QSettings::setDefaultFormat(QSettings::IniFormat);
  QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, lSettings.path());
  if (aPrepare) {
    aPrepare();
  }
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
