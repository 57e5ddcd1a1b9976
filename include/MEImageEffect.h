// What is done to a picture before it goes into an image list ("effect" of an
// image list in a UI description).
#pragma once

enum MEImageEffect {
    ImageEffectNone = 0,    // "none"
    ImageEffectMirror = 1,  // "mirror": left to right about column width / 2 (see MCDC::Mirror)
};
