#pragma once

#include "ParvexTechExport.h"

#include <QBrush>
#include <QColor>
#include <QFont>
#include <QPen>
#include <QString>

// One drawing style of a graph: a colour with the pen and brush made from it, and a font. Graphs
// address their styles by layer number, so that a whole family of curves changes colour (reverse
// video, another palette) by recolouring layers instead of touching every curve.
class PT_EXPORT PtLayer
{
public:
  // The family name that asks the font system for its default sans-serif face, whatever fonts the
  // desktop has.
  static const QString GENERIC_SANS_SERIF;

  PtLayer();

  // Colours the pen and the brush alike; the pen keeps its width and style.
  void SetColor(const QColor& aColor);
  QColor Color() const { return mColor; }
  void SetFont(const QString& aFamily, float aPointSize);

  QPen& Pen() { return mPen; }
  const QPen& Pen() const { return mPen; }
  QBrush& Brush() { return mBrush; }
  const QBrush& Brush() const { return mBrush; }
  const QFont& Font() const { return mFont; }

private:
  QColor mColor;
  QPen mPen;
  QBrush mBrush;
  QFont mFont;
};
