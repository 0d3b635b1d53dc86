#pragma once

#include "model/Design.h"
#include "platform/FileServices.h"
#include "study/StudyChart.h"
#include "study/StudyQuestions.h"
#include "study/Target.h"
#include "study/Variant.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvanta {

/// A member of a study file that this version does not know: kept as it was read, so that a file
/// loses nothing by being written again.
struct UnknownMember {
    std::string Name;
    std::string Json; ///< its value

    friend bool operator==(const UnknownMember&, const UnknownMember&) = default;
};

/// All that stands beside a document in its study file. Stored units.
struct StudyData {
    std::string Document; ///< path from the folder of the study file, with "/"; empty for none
    std::optional<Design> Baseline;
    std::vector<Variant> Variants; ///< names unique
    std::vector<Target> Targets;
    std::vector<StudyChart> Charts;
    StudyQuestions Questions;
    std::vector<UnknownMember> Unknown;

    friend bool operator==(const StudyData&, const StudyData&) = default;
};

/// The schema that this version writes; it reads no newer one.
inline constexpr int StudyVersion = 1;

/// Reads a study file: JSON in UTF-8. Gives the whole study or throws Failure, which names
/// `fileName` and the place: the line and column where the text is no JSON, otherwise the member,
/// as in `variants[2].points.ptWC`. Refused are a file of another kind or a newer schema, a name
/// that stands twice, a name within a known member that is not known, a member that is missing, and
/// a value of the wrong type or out of its range. A question is read as it stands, also one that
/// has no answer.
[[nodiscard]] StudyData ReadStudy(std::string_view bytes, const std::string& fileName);

/// The bytes of a study file, indented for the reader's eye. Every number reads back as the same
/// double. Points that are neither in play nor away from the origin are left out. The titles of
/// channels and the words of mechanisms are for the reader; their numbers count. Throws Failure,
/// naming the place, for a study that `ReadStudy` would refuse: a number that is none, a text that
/// is not UTF-8, a name that stands twice, an adjuster without its range. A question that is as at
/// first is left out, and so are the charts, figures and targets within the questions.
[[nodiscard]] std::string WriteStudy(const StudyData& study);

/// What a study file in a folder calls a document: the relative path with "/", or the full one
/// where none leads there. Both paths must be full ones.
[[nodiscard]] std::string StudyPathOfDocument(const std::string& studyPath,
                                              const std::string& documentPath);

/// The document of a study file that may have been moved: where the study says, seen from its own
/// folder, or else under its name beside the study file. Nothing when it is at neither place.
[[nodiscard]] std::optional<std::string>
FindDocument(const std::string& studyPath, const std::string& document, const FileServices& files);

} // namespace corvanta
