// Native builds have no modules with resources: nothing can be loaded.
#include "client/oxapp/ox_image.h"

namespace oxapp {

bool COxImage::Load() { return false; }

}  // namespace oxapp
