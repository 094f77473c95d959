// Which of the toolkit's renderers draws the windows.
#pragma once

namespace zenlot {

// The one that draws with the processor, as long as the environment names none:
// QT_QUICK_BACKEND=rhi or QSG_RHI_BACKEND=opengl choose the graphics card. To be called before the
// first window.
//
// What these windows show changes little and rarely. A graphics driver takes more memory than the
// whole program, and longer to load; the figures stand in docs/decisions.md.
void chooseRenderer();

} // namespace zenlot
