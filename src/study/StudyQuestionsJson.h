#pragma once

#include "study/StudyJson.h"
#include "study/StudyNode.h"
#include "study/StudyQuestions.h"

/// The questions of the studies as members of a study file, each beside the others and left out
/// while it is as at first. They are kept as they stand: whether a question has an answer says its
/// study when it is asked.
namespace corvanta::studyfile {

/// Of the root of a file. Throws Failure that names the place.
[[nodiscard]] StudyQuestions ReadQuestions(const Node& root);

/// To the root of a file. Throws Failure that names the place.
void AddQuestions(Json& root, const StudyQuestions& questions);

} // namespace corvanta::studyfile
