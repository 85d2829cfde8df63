#pragma once

#include <QDir>
#include <QString>
#include <QWidget>

namespace PxTest
{
// Renders aWidget to <build>/gallery/<aName>.png so a person can look at what a form shows.
// Returns false when the picture could not be written.
inline bool SaveToGallery(QWidget* aWidget, const QString& aName)
{
  const QString lDir = QStringLiteral(PX_GALLERY_DIR);
  QDir().mkpath(lDir);
  return aWidget->grab().save(lDir + QLatin1Char('/') + aName + QStringLiteral(".png"));
}
} // namespace PxTest
