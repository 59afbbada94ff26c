#pragma once

namespace vexplot {

// `vexplot render DATA -o OUT.png|OUT.bmp [options]`: draws a data file the
// way a host would, through the control on the headless site, and saves
// the view as a picture. Returns 0 on success, 1 when the data cannot be
// loaded, no engine can be started or the picture cannot be written, 2 for
// wrong arguments.
int RunRenderCommand(int argc, char** argv);

}  // namespace vexplot
