#include "viewer/show_svg.h"

namespace tlvn {

// Windows draws real windows; only the window back end in memory records its drawing.
int WriteMailSvg(const Mail& /*mail*/, const std::string& /*path*/, std::string& error)
{
    error = "pictures are drawn by the native build of tolvan-show";
    return 0;
}

} // namespace tlvn
