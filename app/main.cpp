#include "PxEntry.h"

#include <QApplication>
#include <cstdio>

int main(int argc, char** argv)
{
  QApplication lApp(argc, argv);
  std::printf("parvex-config %s\n", PtGetVersion());
  return 0;
}
