#pragma once

#include <QString>
#include <QWidget>

namespace corvanta::test {

/// Takes pictures of windows, named by their order and what they show.
class Photographer {
  public:
    explicit Photographer(QString folder);

    /// Of a window as it is, or of another width.
    void Take(QWidget* window, const QString& name, int width = 0) const;

    [[nodiscard]] QString Path(const char* name) const { return m_folder + "/" + name; }

  private:
    QString m_folder;
};

} // namespace corvanta::test
