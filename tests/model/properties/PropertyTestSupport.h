#pragma once

#include "PtException.h"
#include "PxProperty.h"

#include <QSignalSpy>

#include <functional>
#include <gtest/gtest.h>
#include <initializer_list>

// Expects aCall to report a bad argument through PtInvalidArgument with the given site (the
// exception's code) and with aValueText quoted in the message.
inline void ExpectRefused(const std::function<void()>& aCall, unsigned int aSite, const QString& aValueText,
                          const QString& aName = QStringLiteral("aValue"))
{
  try {
    aCall();
    ADD_FAILURE() << "accepted";
  } catch (const PtInvalidArgumentException& e) {
    unsigned int lCode = 0;
    QString lText;
    PtExtractException(e, &lCode, &lText);
    EXPECT_EQ(lCode, aSite) << lText.toStdString();
    EXPECT_TRUE(lText.contains(QLatin1Char('"') + aValueText + QLatin1Char('"'))) << lText.toStdString();
    EXPECT_TRUE(lText.contains(aName)) << lText.toStdString();
  }
}

// The indexes carried by the signals a spy recorded, in order.
inline std::vector<size_t> Indexes(const QSignalSpy& aSpy)
{
  std::vector<size_t> lIndexes;
  for (const QList<QVariant>& lArguments : aSpy) {
    lIndexes.push_back(lArguments.at(0).value<size_t>());
  }
  return lIndexes;
}

// aProperty made to hold exactly aValues, set one by one as an edit or a driver would set them.
template <class P, class V>
P& Fill(P& aProperty, std::initializer_list<V> aValues)
{
  aProperty.SetCount(aValues.size());
  size_t lIndex = 0;
  for (const V& lValue : aValues) {
    aProperty.SetValue(lIndex++, lValue);
  }
  return aProperty;
}
