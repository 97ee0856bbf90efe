// Palette and style of the product's windows. A host that has a look of its own
// leaves this alone.
#pragma once

enum class TPalette { System, Light, Dark };

// Sets style, palette and spacing of the whole application; may be called again to
// switch while windows show. System follows the desktop's colours.
void ApplyLook(TPalette palette);
bool PaletteIsDark();
