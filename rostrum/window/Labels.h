// The sixteen label colours of items and layers, 0 being none.
#pragma once

#include <QColor>
#include <QString>

#include <functional>

QT_FORWARD_DECLARE_CLASS(QMenu)

namespace rostrum {

constexpr int kLabelCount = 16;

/// Of none a quiet grey.
QColor LabelColor(int label);
QString LabelName(int label);
/// Entries for none and all labels. @param chosen is told which one
void FillLabelMenu(QMenu *menu, const std::function<void(int label)> &chosen);

} // namespace rostrum
