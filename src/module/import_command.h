// The command that brings measured reference points into the drawing.
#pragma once

namespace ZOR::reg {

/// The body of TSL_REG_IMPORT_REFS: asks for text files and their layout, and stores the points of
/// each as a group of the active drawing, named after the file's stem. A group that is there
/// already stays as it is. What it says goes to the host's message line; in a host without
/// an application object or a file dialog it does nothing. Throws what the drawing throws, and
/// OdError(eNullClass) when the class of the stored groups isn't known; groups stored up to then
/// stay.
void importReferencePoints();

}  // namespace ZOR::reg
