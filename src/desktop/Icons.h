#pragma once

#include <QIcon>
#include <QString>

namespace corvanta {

/// An icon of the program by its name, in the colours of the theme in force and sharp at every
/// scaling. An unknown name gives an empty icon.
[[nodiscard]] QIcon ThemedIcon(const QString& name);

} // namespace corvanta
