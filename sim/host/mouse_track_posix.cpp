// The simulated host's mouse tracking on the native build: the mouse is where the session
// says, and it has always just moved.
#include "sim/host/host_entry.h"
#include "sim/host/session.h"

namespace sim {
namespace {

ProError MouseTrack(int, int*, double* point) {
    CSession& s = CSession::Instance();
    s.Record("ProMouseTrack");
    if (!s.model || !s.cursor || !point) return PRO_TK_GENERAL_ERROR;
    Point3 p = s.PanZoomPoint(*s.cursor);
    for (int i = 0; i < 3; ++i) point[i] = p[i];
    s.lastTrack = CSession::CTrackedPoint{p, *s.cursor};
    return PRO_TK_NO_ERROR;
}

}  // namespace

void AddMouseFunctions(std::vector<QvxHostFunction>& table) {
    AddHostFunction<&MouseTrack>(table, "ProMouseTrack_v");
}

}  // namespace sim
