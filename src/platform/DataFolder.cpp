#include "platform/DataFolder.h"

namespace corvanta {

std::string DataFolder(const ProcessServices& process, const FileServices& files) {
    const std::string program = process.ProgramFolder();
    const std::string shared =
        FileServices::ParentFolder(program) + NativePath(R"(share\corvanta)");
    return files.FolderExists(shared) ? shared : program;
}

} // namespace corvanta
