#include "PxDocumentManager.h"

#include "PtRadioPrompt.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QUrl>
#include <QVector>
#include <QWidget>

#include <algorithm>

namespace
{
struct Document
{
  // The fourth value stays 0, so a product type of 0 matches every document.
  unsigned short mProductTypes[4] = {0, 0, 0, 0};
  QString mPath;
  QString mTitle;
};

QVector<Document>& Documents()
{
  static QVector<Document> sDocuments;
  return sDocuments;
}
} // namespace

int PxDocumentManager::RegisterDocument(unsigned short aProductType, const QString& aPath,
                                        const QString& aTitle)
{
  for (Document& lDocument : Documents()) {
    if (lDocument.mPath != aPath) {
      continue;
    }
    for (int lSlot = 0; lSlot < 3; ++lSlot) {
      if (lDocument.mProductTypes[lSlot] == 0) {
        lDocument.mProductTypes[lSlot] = aProductType;
        return lSlot;
      }
    }
    return 2;
  }
  Document lDocument;
  lDocument.mProductTypes[0] = aProductType;
  lDocument.mPath = aPath;
  lDocument.mTitle = aTitle;
  Documents().append(lDocument);
  return 0;
}

unsigned long PxDocumentManager::DocumentCount()
{
  return static_cast<unsigned long>(Documents().size());
}

void PxDocumentManager::ShowDocument(unsigned long aIndex)
{
  if (aIndex >= DocumentCount()) {
    return;
  }
  // "file:" and the path, with the characters that mean something in a URL ('#', '?', '%')
  // escaped: a guide in a folder named "Sensors #2" must open, not a fragment of another file.
  QDesktopServices::openUrl(QUrl::fromLocalFile(Documents().at(static_cast<int>(aIndex)).mPath));
}

void PxDocumentManager::ShowUserGuide(unsigned short aProductType, QWidget* aParent)
{
  const QVector<Document>& lDocuments = Documents();
  if (lDocuments.size() < 2) {
    ShowDocument(0);
    return;
  }
  QVector<int> lMatches;
  for (int lIndex = 0; lIndex < lDocuments.size(); ++lIndex) {
    const unsigned short* lTypes = lDocuments[lIndex].mProductTypes;
    if (std::find(lTypes, lTypes + 4, aProductType) != lTypes + 4) {
      lMatches.append(lIndex);
    }
  }
  if (lMatches.size() < 2) {
    ShowDocument(lMatches.isEmpty() ? 0 : static_cast<unsigned long>(lMatches.last()));
    return;
  }
  PtRadioPrompt lPrompt(aParent, aParent ? aParent->windowTitle() : QString(),
                        QCoreApplication::translate("PxDocumentManager", "Please select the document you want to display:"));
  for (int lIndex : lMatches) {
    lPrompt.AddItem(lDocuments[lIndex].mTitle, lIndex);
  }
  if (lPrompt.exec() == QDialog::Accepted) {
    ShowDocument(static_cast<unsigned long>(lPrompt.Value()));
  }
}

void PxDocumentManager::Clear()
{
  Documents().clear();
}
