#include "tool/ToolFiles.h"

#include "model/Failure.h"

#include <iostream>
#include <iterator>

namespace corvanta {

bool CToolFiles::FileExists(const std::string& path) const {
    return path == StreamPath || DiskFileServices::FileExists(path);
}

std::string CToolFiles::ReadBytes(const std::string& path) {
    if (path != StreamPath) {
        return DiskFileServices::ReadBytes(path);
    }
    if (!m_hasRead) {
        m_hasRead = true;
        for (std::istreambuf_iterator<char> next(std::cin), end; next != end; ++next) {
            m_input += *next;
            if (m_input.size() > LargestFile) {
                throw Failure(fnFileAccess, "What comes in is too large for a document");
            }
        }
    }
    return m_input;
}

void CToolFiles::WriteBytes(const std::string& path, std::string_view bytes) {
    if (path != StreamPath) {
        DiskFileServices::WriteBytes(path, bytes);
    } else if (!std::cout.write(bytes.data(), static_cast<std::streamsize>(bytes.size())).flush()) {
        throw Failure(fnFileAccess, "Nothing can be written to standard output");
    }
}

} // namespace corvanta
