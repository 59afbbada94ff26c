#pragma once

namespace vexplot {

// `vexplot palette SOURCE -o OUT.plt [--rows N]`: writes a standard palette
// (0..6, the PaletteId values) or the colours of a palette file as a
// palette file. With --rows the palette is resampled as a colour scale N
// pixels high shows it, one colour a row from the top (highest first), for
// programs that want the plot's colours at the scale's resolution. Returns
// 0 on success, 1 when a file cannot be read or written, 2 for wrong
// arguments.
int RunPaletteCommand(int argc, char** argv);

}  // namespace vexplot
