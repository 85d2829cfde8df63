// A driver-shaped program built against the installed headers and libraries only.
#include <Parvex.h>
#include <ParvexTech.h>

#include <QApplication>
#include <cstdio>
#include <cstring>

int main(int argc, char** argv)
{
  QApplication lApp(argc, argv);
  if (std::strcmp(PtGetVersion(), "3.2.1.23") != 0) {
    std::fprintf(stderr, "unexpected version %s\n", PtGetVersion());
    return 1;
  }
  try {
    PtInvalidArgument(QStringLiteral("aValue"), QStringLiteral("3"), 1);
  } catch (const std::exception& e) {
    unsigned int lCode = 0;
    PtExtractException(e, &lCode, nullptr);
    if (lCode != 1) {
      return 2;
    }
  }
  std::printf("consumer ok\n");
  return 0;
}
