#include "desktop/QtServices.h"

#include "model/Failure.h"
#include "platform/DiskFileServices.h"

#include <QApplication>
#include <QBuffer>
#include <QClipboard>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QImage>
#include <QMainWindow>
#include <QMessageBox>
#include <QPainter>
#include <QPushButton>
#include <QStatusBar>
#include <QSvgGenerator>

#include <algorithm>

namespace corvanta {

namespace {

constexpr int ConfirmationTime = 5000; ///< how long the status bar tells of a saved file, ms
constexpr int ButtonsOfStyle = 15;     ///< the part of a style that names the buttons
constexpr int IconsOfStyle = 0xF0;

QMessageBox::StandardButtons ButtonsOf(int style) {
    switch (style & ButtonsOfStyle) {
    case msYesNoCancel:
        return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    case msYesNo:
        return QMessageBox::Yes | QMessageBox::No;
    default:
        return QMessageBox::Ok;
    }
}

QMessageBox::Icon IconOf(int style) {
    switch (style & IconsOfStyle) {
    case msExclamation:
        return QMessageBox::Warning;
    case msCritical:
        return QMessageBox::Critical;
    case msInformation:
        return QMessageBox::Information;
    default:
        return QMessageBox::NoIcon;
    }
}

int AnswerOf(int button) {
    switch (button) {
    case QMessageBox::Yes:
        return maYes;
    case QMessageBox::No:
        return maNo;
    case QMessageBox::Cancel:
        return maCancel;
    default:
        return maOK;
    }
}

/// The ending of the files of a kind: ".png" of "PNG picture (*.png)".
QString EndingOf(const QString& kind) {
    return kind.section('*', 1).section(')', 0, 0);
}

/// The path that the user chose, with an ending of the kinds; empty when the user cancels.
QString AskSavePath(QWidget* parent, const QString& title, const QString& kinds) {
    QString kind;
    QString path = QFileDialog::getSaveFileName(parent, title, {}, kinds, &kind);
    const QStringList offered = kinds.split(";;");
    const bool ends = std::any_of(offered.begin(), offered.end(), [&](const QString& other) {
        return path.endsWith(EndingOf(other), Qt::CaseInsensitive);
    });
    if (path.isEmpty() || ends) {
        return path;
    }
    // The dialog asked about the name as it was typed.
    const QString whole = path + EndingOf(kind.isEmpty() ? offered.constFirst() : kind);
    const std::string question = QObject::tr("%1 already exists.\nDo you want to replace it?")
                                     .arg(QDir::toNativeSeparators(whole))
                                     .toStdString();
    const bool replace =
        !QFileInfo::exists(whole) ||
        QtMessageBox().Ask(question, msYesNo + msExclamation, {"&Replace"}) == maYes;
    return replace ? whole : QString();
}

/// The plain cursor while a question is open: the wait cursor of the command that asks would say
/// that it is not the user who is waited for.
class ArrowCursor {
  public:
    ArrowCursor() { QApplication::setOverrideCursor(Qt::ArrowCursor); }
    ~ArrowCursor() { QApplication::restoreOverrideCursor(); }
    ArrowCursor(const ArrowCursor&) = delete;
    ArrowCursor& operator=(const ArrowCursor&) = delete;
    ArrowCursor(ArrowCursor&&) = delete;
    ArrowCursor& operator=(ArrowCursor&&) = delete;
};

} // namespace

void AskAndSave(QWidget* parent, const QString& title, const QString& kinds,
                const std::function<void(const QString& path)>& save) {
    const QString path = AskSavePath(parent, title, kinds);
    if (path.isEmpty()) {
        return;
    }
    save(path);
    if (auto* const window = qobject_cast<QMainWindow*>(parent->window())) {
        window->statusBar()->showMessage(QObject::tr("%1 written").arg(QFileInfo(path).fileName()),
                                         ConfirmationTime);
    }
}

void WriteFile(const QString& path, const QByteArray& bytes) {
    DiskFileServices().WriteBytes(path.toStdString(), bytes.toStdString());
}

QByteArray PngOf(const QImage& picture) {
    QBuffer file;
    if (!file.open(QIODevice::WriteOnly) || !picture.save(&file, "PNG")) {
        throw Failure(fnInternal, "The picture could not be made");
    }
    return file.data();
}

QByteArray SvgOf(const QSize& size, const std::function<void(QPainter&)>& paint) {
    QBuffer file;
    QSvgGenerator svg;
    svg.setOutputDevice(&file);
    svg.setResolution(DotsPerInch);
    svg.setSize(size);
    svg.setViewBox(QRect(QPoint(0, 0), size));
    QPainter painter;
    if (!painter.begin(&svg)) {
        throw Failure(fnInternal, "The drawing could not be made");
    }
    paint(painter);
    painter.end();
    return file.data();
}

QString MessageText(const std::string& prompt) {
    QString text = QString::fromStdString(prompt);
    text.replace("\r\n", "\n").replace('\r', '\n');
    return text;
}

int QtMessageBox::Show(const std::string& prompt, int style, const std::string& title) {
    return Run(prompt, style, title.empty() ? "Corvanta" : title, nullptr);
}

int QtMessageBox::Ask(const std::string& prompt, int style, const AnswerWords& words) {
    return Run(prompt, style, "Corvanta", &words);
}

int QtMessageBox::Run(const std::string& prompt, int style, const std::string& title,
                      const AnswerWords* words) {
    QMessageBox box(QApplication::activeWindow());
    box.setTextFormat(Qt::PlainText);
    box.setWindowTitle(QString::fromStdString(title));
    box.setText(MessageText(prompt));
    box.setIcon(IconOf(style));
    box.setStandardButtons(ButtonsOf(style));
    if (words != nullptr) {
        box.button(QMessageBox::Yes)->setText(QString::fromStdString(words->Yes));
        box.button(QMessageBox::No)->setText(QString::fromStdString(words->No));
    }
    // A question that could cost work is not answered by a slip of the Enter key.
    if ((style & ButtonsOfStyle) == msYesNo) {
        box.setDefaultButton(QMessageBox::No);
        box.setEscapeButton(QMessageBox::No);
    }
    const ArrowCursor arrow;
    return AnswerOf(box.exec());
}

int QtMessageBox::Choose(const std::string& prompt, const std::vector<std::string>& ways) {
    QMessageBox box(QApplication::activeWindow());
    box.setTextFormat(Qt::PlainText);
    box.setWindowTitle("Corvanta");
    box.setText(MessageText(prompt));
    box.setIcon(QMessageBox::Warning);
    QList<QAbstractButton*> buttons;
    for (const std::string& way : ways) {
        buttons << box.addButton(QString::fromStdString(way), QMessageBox::ActionRole);
    }
    // What could cost work is not chosen by a slip of the Enter key.
    QPushButton* const cancel = box.addButton(QMessageBox::Cancel);
    box.setDefaultButton(cancel);
    box.setEscapeButton(cancel);
    const ArrowCursor arrow;
    box.exec();
    return static_cast<int>(buttons.indexOf(box.clickedButton())); // -1 for "Cancel"
}

QStringList DialogFilters(const std::string& filter) {
    const QStringList parts = QString::fromStdString(filter).split('|');
    QStringList filters;
    for (int n = 0; n + 1 < parts.size(); n += 2) {
        QString description = parts[n].trimmed();
        const QString pattern = parts[n + 1].trimmed();
        // The toolkit wants the patterns in brackets behind the description, and tells upper from
        // lower case.
        const qsizetype bracket = description.indexOf('(');
        description = bracket < 0 ? description : description.left(bracket).trimmed();
        const QString patterns = pattern.contains("*.*") ? QString("*") : pattern;
        const QString upper = patterns.toUpper();
        filters << description + " (" + patterns + (upper == patterns ? "" : " " + upper) + ")";
    }
    return filters;
}

std::optional<FileNameAnswer> QtFileDialog::Ask(const FileNameRequest& request) {
    QFileDialog dialog(QApplication::activeWindow(), QString::fromStdString(request.Title));
    const bool reads = request.Mode == FileNameMode::Open || request.Mode == FileNameMode::Import;
    const QStringList filters = DialogFilters(request.Filter);
    dialog.setAcceptMode(reads ? QFileDialog::AcceptOpen : QFileDialog::AcceptSave);
    const QFileDialog::FileMode readMode =
        request.Several ? QFileDialog::ExistingFiles : QFileDialog::ExistingFile;
    dialog.setFileMode(reads ? readMode : QFileDialog::AnyFile);
    dialog.setNameFilters(filters);
    // Without a folder of its own a dialog would start where another one was left.
    const QString start = QString::fromStdString(request.StartFolder);
    dialog.setDirectory(QFileInfo(start).isDir() ? start : QDir::homePath());
    if (!request.InitialName.empty()) {
        dialog.selectFile(QString::fromStdString(request.InitialName));
    }
    if (!reads && !request.Extension.empty()) {
        dialog.setDefaultSuffix(QString::fromStdString(request.Extension));
    }
    const ArrowCursor arrow;
    const bool accepted = dialog.exec() == QDialog::Accepted;
    if (request.Passing) {
        QFileDialog().setDirectory(QDir::homePath()); // the toolkit remembers the last one for all
    }
    if (!accepted || dialog.selectedFiles().isEmpty()) {
        return std::nullopt;
    }
    const qsizetype chosen = filters.indexOf(dialog.selectedNameFilter());
    FileNameAnswer answer{dialog.selectedFiles().constFirst().toStdString(),
                          chosen < 0 ? 1 : static_cast<int>(chosen) + 1};
    for (const QString& path : dialog.selectedFiles()) {
        answer.Paths.push_back(path.toStdString());
    }
    return answer;
}

void QtClipboard::SetText(const std::string& text) {
    QApplication::clipboard()->setText(QString::fromStdString(text));
}

std::string QtClipboard::Text() const {
    return QApplication::clipboard()->text().toStdString();
}

void QtScreenCursor::Set(int cursor) {
    if (cursor == m_current) {
        return;
    }
    if (cursor == DefaultCursor) {
        QApplication::restoreOverrideCursor();
    } else {
        QApplication::setOverrideCursor(Qt::WaitCursor);
    }
    m_current = cursor;
}

bool QtPlaceLocks::Take(const std::string& path) {
    auto lock = std::make_unique<QLockFile>(QString::fromStdString(path));
    lock->setStaleLockTime(0); // a lock is stale only when its program is gone
    if (m_locks.contains(path) || !lock->tryLock(0)) {
        return false;
    }
    m_locks[path] = std::move(lock);
    return true;
}

void DesktopProcess::Beep() {
    QApplication::beep();
}

} // namespace corvanta
