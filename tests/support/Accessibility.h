#pragma once

#include <QStringList>
#include <QWidget>

/// The controls below `root`, shown or not, that assistive software can't name: buttons, fields, lists and tables
/// without an accessible name. Each by its class and object name.
QStringList AccessibilityFaults(QWidget& root);
