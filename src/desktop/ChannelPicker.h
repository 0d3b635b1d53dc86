#pragma once

#include "model/Channels.h"

#include <QDialog>

class QDialogButtonBox;
class QLineEdit;
class QListWidget;

namespace corvanta {

/// Asks for a channel: a list that narrows while words of a title are typed.
class ChannelPicker final : public QDialog {
    Q_OBJECT

  public:
    ChannelPicker(const ChannelCatalogue& channels, int chosen, QWidget* parent);

    [[nodiscard]] int Chosen() const;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void Narrow(const QString& words);

    QLineEdit* m_filter;
    QListWidget* m_list;
    QDialogButtonBox* m_buttons;
};

} // namespace corvanta
