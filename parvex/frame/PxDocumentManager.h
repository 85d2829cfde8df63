#pragma once

#include "ParvexExport.h"

#include <QString>

class QWidget;

// The user guides "User Guide..." can open: file paths with a title and up to three product types
// each. The host application registers them at start.
class PX_EXPORT PxDocumentManager
{
public:
  PxDocumentManager() = delete;

  // Adds a document, or another product type to an already registered path. Returns the product
  // type slot used (0 to 2); 2 also when all three slots of the path are taken (nothing changes).
  static int RegisterDocument(unsigned short aProductType, const QString& aPath, const QString& aTitle);
  static unsigned long DocumentCount();
  // Opens document aIndex with the desktop's viewer; an index past the end does nothing.
  static void ShowDocument(unsigned long aIndex);
  // Opens the guide for aProductType (0 matches every document), asking the user to choose when
  // several match.
  static void ShowUserGuide(unsigned short aProductType, QWidget* aParent);
  // Forgets every document; for hosts that register anew and for tests.
  static void Clear();
};
