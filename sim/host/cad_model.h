// The simulated host's model and its view: a wireframe part, the current view's orientation,
// the window's pan-zoom matrix, the host's refit, and a picture of what the window shows.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace sim {

using Matrix4 = std::array<std::array<double, 4>, 4>;
using Point3 = std::array<double, 3>;

Matrix4 Identity();
Matrix4 Multiply(const Matrix4& a, const Matrix4& b);
/// A point as a row vector times the matrix (with w = 1).
Point3 Transform(const Point3& p, const Matrix4& m);

/// The host's model types.
inline constexpr int kModelAssembly = 1;
inline constexpr int kModelPart = 2;
inline constexpr int kModelDrawing = 4;

struct CEdge {
    Point3 from;
    Point3 to;
};

/// A material assigned to a model: its name and its mass density with the density's unit.
struct CMaterial {
    std::wstring name;
    double density = 0;
    std::wstring densityUnit;
};

/// What the host's mass property calculation gives for a solid.
struct CMassProperties {
    double volume = 0;
    double density = 0;
    double mass = 0;
};

struct CModel {
    /// The name the host shows, with its extension: "block.prt".
    std::string name;
    int type = kModelPart;  ///< the host's model type: kModelAssembly, kModelPart, kModelDrawing
    /// The handle the host gives out for this model; unique in the session.
    int handle = 0;
    /// Where the model's file lies: folder, drive, and the machine when it is another one's.
    std::wstring folder;
    std::wstring device;
    std::wstring host;
    /// The version the host's last save wrote (name.ext.version); 0: never saved.
    int version = 0;
    std::optional<CMaterial> material;
    std::optional<CMassProperties> mass;
    /// The texts of the principal unit system's mass and length units.
    std::wstring massUnit = L"kg";
    std::wstring lengthUnit = L"mm";
    std::vector<CEdge> edges;
    Point3 boxMin{};
    Point3 boxMax{};
};

/// A small sample part: a block 120 x 80 x 50 (X, Y, Z) with a gable roof along X on top (+Y),
/// and a chimney at the +X, +Z corner; every standard view of it looks different.
CModel MakeSamplePart(const std::string& name);

/// The window's extents in the host's screen units.
inline constexpr double kWindowWidth = 1000.0;
inline constexpr double kWindowHeight = 843.75;

/// The pan-zoom matrix that fits the model's box, seen through `orientation`, into the window
/// with a margin, centred.
Matrix4 FitPanZoom(const CModel& model, const Matrix4& orientation);

/// Rotates the view about the axis out of the screen through the window's centre, by `degrees`
/// counter-clockwise, so the zoom and the centre stay.
Matrix4 RollAboutWindowCentre(const Matrix4& orientation, const Matrix4& panZoom, double degrees);

/// An SVG picture of the model's edges through both matrices, with the model axes drawn and
/// labelled and a caption; the window's 1000 x 843.75 units become 640 x 540 pixels.
std::string RenderSvg(const CModel& model, const Matrix4& orientation, const Matrix4& panZoom,
                      const std::string& caption);

}  // namespace sim
