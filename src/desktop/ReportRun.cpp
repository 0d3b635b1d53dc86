#include "desktop/ReportRun.h"

#include "desktop/QtPageWriter.h"
#include "frame/MSusp.h"
#include "platform/NoWindowSystem.h"
#include "platform/StandardErrorBox.h"

#include <utility>

namespace corvanta {

namespace {

/// A printer that is a PDF file and asks for nothing.
class PdfPrinter final : public QtPageWriter {
  public:
    explicit PdfPrinter(std::string path) : m_path(std::move(path)) {}

    bool Print() override {
        SavePdf(m_path);
        return true;
    }

  private:
    std::string m_path;
};

} // namespace

bool RunReport(FileServices& files, ProcessServices& process, const std::string& pdfPath) {
    StandardErrorBox box;
    NoWindowSystem noWindows;
    PdfPrinter printer(files.FullPath(pdfPath));
    WindowSystem windows = noWindows.Services(printer);
    Application application(files, box, process, windows);
    if (application.AppStart() == StartResult::Ended) {
        return false;
    }
    application.Begin();
    frmMain& main = application.MainWindow();
    if (!application.Data().Document.ResultsValid) {
        return false;
    }
    main.Execute(mcPrint, 0);
    frmPrint& dialog = *main.PrintDialog;
    dialog.cmdOK_Click();
    return !dialog.IsOpen;
}

} // namespace corvanta
