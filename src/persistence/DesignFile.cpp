#include "persistence/DesignFile.h"

#include "model/Failure.h"
#include "model/Suspension.h"
#include "persistence/CFileStream.h"
#include "persistence/MData.h"
#include "platform/CodePage.h"
#include "solver/SInitGeo.h"

namespace corvanta {

namespace {

/// Keeps what is said while nobody is to be asked.
class ListeningBox final : public MessageBox {
  public:
    int Show(const std::string& prompt, int /*style*/, const std::string& /*title*/) override {
        Heard += (Heard.empty() ? "" : "\r") + prompt;
        return maNone;
    }
    std::string Heard;
};

} // namespace

Design ReadDesign(const std::string& path, const FundamentalUnits& units, FileServices& files,
                  std::string& words) {
    Suspension document;
    ViewSettings settings;
    ResetDocument(document, settings);
    FundamentalUnits copy = units;
    ChannelCatalogue channels;
    channels.ChannelsSetup(copy);
    ListeningBox box;
    Messages messages(box);
    if (!DataLoad(document, channels, path, false, units, files, messages)) {
        throw Failure(fnInvalidCall, box.Heard);
    }
    words = box.Heard;
    return DesignOf(document);
}

std::string DesignText(const Design& design, const FundamentalUnits& units, FileServices& files) {
    Suspension document;
    SetDesign(document, design, units);
    ListeningBox box;
    Messages messages(box);
    return DataText(document, units, files, messages);
}

std::string DescriptionIn(const std::string& documentText, const FundamentalUnits& units,
                          FileServices& files) {
    ListeningBox box;
    Messages messages(box);
    CFileStream stream(files, messages, units.NumberSeparators);
    stream.SetContents(FromCodePage1252(ToCodePage1252(documentText)));
    return stream.GetFieldString("Description");
}

} // namespace corvanta
