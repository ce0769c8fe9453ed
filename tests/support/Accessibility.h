#pragma once

#include <QStringList>
#include <QWidget>

/// The controls below `root`, visible or not, without an accessible name: buttons, fields, lists and tables. Each as
/// class and object name.
QStringList AccessibilityFaults(QWidget& root);
