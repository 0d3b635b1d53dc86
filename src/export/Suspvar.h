#pragma once

#include "model/NumberText.h"
#include "model/Suspension.h"
#include "persistence/CFileStream.h"
#include "platform/FileServices.h"
#include "platform/Messages.h"

#include <span>
#include <string>

namespace corvanta {

/// A corner as a component file of a lap simulator: a tagged stream of tables that run over the
/// length of the spring. All values are in stored units, mm and deg, whatever the user's units.
///
/// All tables are made before the file is opened. Throws Failure when one can't be made; false,
/// after the stream's message, when the file can't be written. Either way the file that was there
/// stays.

/// Writes version 1.1: properties along wheel travel at the static rack step, and one curve of
/// steering along rack travel. True if the file holds them.
bool ExportSUSPVAR1_1(const Suspension& document, const std::string& filePath,
                      const Separators& separators, FileServices& files, Messages& messages);

/// Writes version 2.2: twelve tables of properties and one of steering, each over spring length and
/// rack travel. True if the file holds them.
bool ExportSUSPVAR2_1(const Suspension& document, const std::string& filePath,
                      const Separators& separators, FileServices& files, Messages& messages);

/// Fills page `page` of version 2.2's tables with a channel, or with the height of the wheel
/// centre: cell (i, r) is the value at spring length i of `strutLengths` and rack step r, both
/// counted from 1. Row 0 holds the rack travels, column 0 the spring lengths, cell (0, 0) is 0.
/// Every cell is rounded to 7 significant figures.
void SuspvarPageFill(FieldTable3d& tables, const Suspension& document, int channel, int page,
                     std::span<const double> strutLengths, bool useWheelCentreHeight);

/// Fills version 2.2's table of steer angles, laid out as a page. Its angles fall as the rack step
/// rises, whichever way round the rack is mounted: they carry the sign that makes it so.
void SuspvarSteeringFill(FieldTable& table, const Suspension& document,
                         std::span<const double> strutLengths);

/// A value rounded to a number of significant figures, ties to even.
[[nodiscard]] double RoundToSignificantFigures(double value, int figures);

} // namespace corvanta
