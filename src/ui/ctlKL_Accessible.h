#pragma once

// Screen readers and desktop tools see the family's buttons as push buttons that can be
// pressed and its scroll bars as sliders with a value; installed once by the first control.
void ctlKL_InstallAccessibility();
