/// \file libloopwise.h
/// \brief Geometric routines on protein backbones given as C-alpha traces.
///
/// The one exported header of libloopwise. It needs C++17 or later and nothing beyond the standard
/// library. All functions are free functions in the global namespace.
///
/// For every function, unless its own text says more:
///  - Lengths are in the unit of the coordinates, by habit angstroms; the library never converts.
///  - Values belong to the caller. No function keeps a reference or pointer after it returns.
///  - No function throws an exception of its own. A function that allocates may let
///    std::bad_alloc through; the caller's values are then still valid.
///  - Coordinates may be infinite or not a number everywhere. A comparison with the latter is false.
///  - Every function may be called from several threads at once on separate values, after
///    FillFulerenData() has run once. Random closures share the process's std::rand().
#ifndef LIBLOOPWISE_H
#define LIBLOOPWISE_H

#include <cstdint>
#include <string>
#include <vector>

/// Marks what the shared library exports.
#if defined(__GNUC__)
#define LOOPWISE_API __attribute__((visibility("default")))
#else
#define LOOPWISE_API
#endif

/// \defgroup model Chain model and measures
/// \defgroup textio Chain text input and output
/// \defgroup reduce Reduction and projection
/// \defgroup closure Chain closure

/// \addtogroup model
/// @{

/// A point or a vector in space.
struct PointR3 {
    double x; ///< first coordinate
    double y; ///< second coordinate
    double z; ///< third coordinate
};

/// One bead of a chain: the C-alpha atom of one residue.
struct ChainAtom {
    double x; ///< first coordinate
    double y; ///< second coordinate
    double z; ///< third coordinate
    /// The caller's numbering, taken as it is: it may be negative, repeated or out of order.
    std::int32_t id;
};

/// The atoms of one chain in order along the backbone; neighbours are joined by a segment.
using Chain = std::vector<ChainAtom>;

/// The components (separate chains) of one molecule, in the caller's order.
using Structure = std::vector<std::vector<ChainAtom>>;

/// The tolerance of CompareEq(), CompareGt() and CompareGeq(), in the unit of what they compare.
inline constexpr double EPS = 1e-5;

/// Whether \p a and \p b are equal within the tolerance: |a - b| < EPS.
/// A difference of exactly EPS is not equal; a not-a-number equals nothing. Allocates nothing.
LOOPWISE_API bool CompareEq(double a, double b);

/// Whether \p a exceeds \p b by at least the tolerance: a >= b + EPS.
/// Exceeding by exactly EPS counts; false for a not-a-number. Allocates nothing.
LOOPWISE_API bool CompareGt(double a, double b);

/// Whether \p a is greater than \p b or less by less than the tolerance: a > b - EPS.
/// Falling short by exactly EPS does not count; false for a not-a-number. Allocates nothing.
LOOPWISE_API bool CompareGeq(double a, double b);

/// Euclidean distance of \p a and \p b; exactly 0.0 when their coordinates are equal and finite.
/// Computed as the square root of (dx*dx + dy*dy) + dz*dz, so it overflows to infinity from about
/// 1e154 on and underflows to zero below about 1e-162. Allocates nothing.
LOOPWISE_API double Dist(PointR3 a, PointR3 b);

/// The largest identifier of \p chain, at least -1: an empty chain, or one whose identifiers are all
/// below -1, gives -1. The chain is not changed. Allocates nothing.
LOOPWISE_API int maxIdChain(std::vector<ChainAtom>& chain);

/// The largest identifier over all components of \p structure, at least -1; -1 when there is no
/// atom. The structure is not changed. Allocates nothing.
LOOPWISE_API int maxIdComps(std::vector<std::vector<ChainAtom>>& structure);

/// Whether \p structure has no component, or a component without atoms: the structures that the
/// closures refuse. The structure is not changed. Allocates nothing.
LOOPWISE_API bool IsEmptyStructure(std::vector<std::vector<ChainAtom>>& structure);

/// The centre of \p chain: the mean of its atoms' coordinates, each coordinate summed in chain order
/// and divided once. (0, 0, 0) for an empty chain. Allocates nothing.
LOOPWISE_API PointR3 CentreOfChain(const std::vector<ChainAtom>& chain);

/// The radius of \p chain: the largest distance of an atom from CentreOfChain(). This is not the
/// radius of the smallest enclosing sphere. 0.0 for an empty chain and for one atom; distances that
/// are not a number do not count. Allocates nothing.
LOOPWISE_API double RadiusOfChain(const std::vector<ChainAtom>& chain);

/// The diameter of \p chain: the largest distance between two of its atoms, neighbours or not.
/// 0.0 for fewer than two atoms; distances that are not a number do not count. Allocates nothing.
LOOPWISE_API double DiameterOfChain(const std::vector<ChainAtom>& chain);

/// The diameter of \p structure: the largest distance between two of its atoms, of one component or
/// of two. 0.0 when there are fewer than two atoms; distances that are not a number do not count.
/// Allocates nothing.
LOOPWISE_API double DiameterOfStructure(const std::vector<std::vector<ChainAtom>>& structure);

/// Cuts \p chain to the subchain between two identifiers, both included, given in either order.
///
/// Atoms are taken off the front and the back until both end atoms have identifiers inside the range;
/// atoms between them stay whatever their identifiers are. A range with a bound outside the
/// identifiers of the two end atoms is refused: a line goes to std::cerr, two to std::clog, and the
/// whole chain stays. So it does when no atom of the chain lies inside the range.
///
/// \param chain  edited in place; an empty one stays empty and nothing is printed
/// \param start  one bound, an identifier
/// \param end    the other bound
/// \return 0 always
///
/// Allocates nothing but what the streams need.
LOOPWISE_API int CutChain(std::vector<ChainAtom>& chain, int start, int end);

/// @}
/// \addtogroup textio
/// @{

/// Reads a chain from the file \p fileName, one atom per line: identifier, x, y and z, separated by
/// blanks or tabs. What follows the fourth number of a line is ignored; empty lines are skipped.
///
/// Numbers are read as the standard streams read them under the process's global C++ locale at the
/// time of the call: with a decimal comma in force, "1,5" is a number and "1.5" is not. A field that
/// is not a number becomes 0 and ends its line; fields that a line lacks keep the previous line's
/// values. Before the first line the identifier is 0 and the coordinates are
/// (1.412341234, 3.432312, 0.65436).
///
/// Two neighbouring lines whose Dist() is exactly 0 (equal coordinates, or a difference so small that
/// its square underflows), or a line that yields no coordinate, stop the read: "There were two identical
/// atoms with the index ..." goes to std::cout, and the result is empty.
///
/// \param fileName  path of the file; null counts as a file that cannot be opened
/// \param error     true when the file could not be opened, false in every other case: also after a
///                  repeated atom, and for a directory, which opens but holds no line
/// \return the atoms in the order of the lines; empty on failure. Allocates.
LOOPWISE_API std::vector<ChainAtom> ChainRead(char* fileName, bool& error);

/// Reads a chain from \p text, which has the layout that ChainRead() describes.
///
/// The two readers differ in this: an empty line is not skipped here but stops the read like a
/// repeated atom, and a repeated atom sets the error flag.
///
/// \param text   the lines; the last one needs no newline
/// \param error  true when a repeated atom stopped the read, otherwise false
/// \return the atoms in the order of the lines; empty on failure and for an empty text. Allocates.
LOOPWISE_API std::vector<ChainAtom> ChainRead_fromString(const std::string& text, bool& error);

/// Checks whether consecutive atoms of \p chain lie between 3.4 and 4.2 apart, both included: the
/// band around the 3.8 angstroms between neighbouring C-alpha atoms of a protein.
///
/// \return "OK", also for fewer than two atoms. Otherwise "HEAD: broken protein between" and, each
/// after a blank, the closest pair when it is too close and the farthest when it is too far apart, in
/// the form "12-13(9.5)": identifiers in plain decimal, the distance with six significant digits under
/// the global C++ locale. Of equal extremes the first counts; distances that are not a number do not.
///
/// Prints nothing. Takes a copy of the chain. Allocates.
LOOPWISE_API std::string CheckDistancesBetweenAtoms(std::vector<ChainAtom> chain);

/// The text of \p chain, one line per atom in chain order; empty for an empty chain.
///
/// With \p plainFormat, a line holds the identifier, x, y and z separated by single blanks: what the
/// readers take. Otherwise it is a PDB ATOM record of a C-alpha atom of residue XXX in chain A, with
/// the identifier as serial and as residue number and every coordinate cut (not rounded) to seven
/// characters; identifiers of five or more characters move the rest of the line to the right.
///
/// Numbers are written as the standard streams write them by default under the process's global C++
/// locale: six significant digits, so two atoms that differ only beyond them read back as a repeated
/// atom. Infinite and not-a-number coordinates are written as the streams write them ("inf", "nan").
/// Allocates.
LOOPWISE_API std::string ChainWrite_toString(const std::vector<ChainAtom>& chain, bool plainFormat);

/// Writes the text of ChainWrite_toString() to the file \p fileName, replacing what it held.
///
/// The file is emptied, then the whole text is built and written in one piece. A file that cannot be
/// opened (a null name included) and an error while writing are not reported. Allocates.
LOOPWISE_API void ChainWrite(char* fileName, const std::vector<ChainAtom>& chain, bool plainFormat);

/// @}
/// \addtogroup reduce
/// @{

/// The orientation determinant of the planar points (x1, y1), (x2, y2), (x3, y3): twice the signed
/// area of their triangle, positive when they turn counter-clockwise, 0 when they are collinear.
/// Evaluated as ((x1*y2 + y1*x3) + x2*y3) - x3*y2 - x1*y3 - x2*y1 in this order. Allocates nothing.
LOOPWISE_API double det_segments(double x1, double y1, double x2, double y2, double x3, double y3);

/// Whether (px, py) lies in the closed bounding box of the planar segment (x1, y1)-(x2, y2).
/// Exact, inclusive comparisons; collinearity is not tested. Allocates nothing.
LOOPWISE_API bool on_segment(double x1, double y1, double x2, double y2, double px, double py);

/// Whether the planar segments P1P2 and P3P4 cross or touch, by the orientation test of Cormen,
/// Leiserson, Rivest and Stein, "Introduction to Algorithms", chapter on computational geometry.
/// A shared end point and a collinear overlap count. Exact comparisons. Allocates nothing.
LOOPWISE_API bool TwoSegmentsCrossedSimple(double x1, double y1, double x2, double y2, double x3, double y3, double x4,
                                           double y4);

/// The dot product of two vectors of three elements each: a[0]*b[0] + a[1]*b[1] + a[2]*b[2].
/// Allocates nothing.
LOOPWISE_API double ScalarProduct(double* a, double* b);

/// The determinant of the 3x3 matrix with the rows \p a, \p b and \p c (three elements each), by the
/// rule of Sarrus. Allocates nothing.
LOOPWISE_API double Determinant(double* a, double* b, double* c);

/// Whether a straight segment meets a triangle in space.
///
/// Solves S0 + t(S1 - S0) = T0 + u(T1 - T0) + v(T2 - T0) by the explicit inverse (as in Moeller and
/// Trumbore, "Fast, minimum storage ray/triangle intersection", 1997, but with a tolerance) and
/// classifies t, u, v and u + v with CompareGt(), CompareGeq() and CompareEq().
///
/// \param triangle  three points T0, T1, T2; read only
/// \param segment   two points S0, S1; read only
/// \retval 0 no contact
/// \retval 1 the segment passes through the interior, or the determinant comes out as exactly 0, at
///           whatever distance: always for a segment of no length, a triangle with a repeated first
///           vertex, and both in or parallel to a coordinate plane; else when rounding leaves nothing
/// \retval 2 contact within the tolerance: with an edge or a vertex, or by an end of the segment
///
/// Coordinates that are not finite get no special treatment; what they make not a number counts as
/// no contact. Allocates nothing.
LOOPWISE_API int intersection(PointR3* triangle, PointR3* segment);

/// Removes the atoms of \p chain that its entanglement does not need: triangle elimination, or KMT
/// reduction (Koniaris and Muthukumar, "Knottedness in ring polymers", Phys. Rev. Lett. 66, 1991;
/// Taylor, "A deeply knotted protein structure and how it might fold", Nature 406, 2000).
///
/// An atom and its two neighbours form a triangle. The triangle is free when intersection() returns 0
/// for it and every segment that shares no atom with it. The first free triangle along the chain loses
/// its middle atom and the search starts again, until no triangle is free or three atoms remain. The
/// atoms that remain keep their order and their records.
///
/// A chain stored with its first atom repeated at its end (same identifier, less than EPS apart) is
/// treated as a loop whatever \p closed says, and stored in the same way afterwards, with a copy of
/// the atom that is first then.
///
/// \param chain   edited in place; with three atoms or fewer, a repeated end apart, unchanged
/// \param closed  whether a segment joins the last atom to the first. The two ends of an open chain
///                are never dropped
/// \return the number of atoms that the chain holds afterwards, 0 for an empty chain
///
/// Writes one debug line to std::cout on every call and flushes it. Allocates nothing, whatever the
/// length. Beyond 3,455 atoms ChainsReduce() on a structure of this one chain is several times as fast.
LOOPWISE_API int ChainReduce(std::vector<ChainAtom>& chain, bool closed);

/// Reduces all components of \p structure together, so that their entanglement with themselves and with
/// each other remains: ChainReduce() in which the segments of all other components block too.
///
/// The first free triangle of the first component goes first, and after every removal the search
/// starts at the first component again. Components of three atoms or fewer lose nothing but can
/// block. When at least one component is stored with its first atom repeated at its end (one atom
/// alone counts as that), such components are loops and all others are open, whatever \p closed says.
///
/// \param structure  edited in place; empty components stay empty and block nothing
/// \param closed     whether every component is a loop, unless a repeated end decides
/// \return the number of atoms in all components afterwards, 0 for an empty structure
///
/// Prints nothing. Allocates in proportion to the atoms, before it changes anything. The one to call for
/// long chains, also for a single one.
LOOPWISE_API int ChainsReduce(std::vector<std::vector<ChainAtom>>& structure, bool closed);

/// One record of Edge::annotations, for the caller's use.
struct EdgeAnnotation {
    double position;    ///< where along the edge, by the caller's convention
    std::int64_t label; ///< what is there, by the caller's convention
};

/// One segment of a chain seen along a direction.
struct Edge {
    PointR3 start; ///< the first atom: x and y in the picture plane, z the depth along the direction
    PointR3 end;   ///< the second atom
    std::vector<EdgeAnnotation> annotations; ///< empty in what the library returns
    std::int32_t tag;                        ///< 0 in what the library returns
};

/// The coordinates of \p point in the right-handed orthonormal frame whose third axis points along
/// \p direction, of which only the whole parts (a, b, c) count, truncated towards zero.
///
/// The axes are (-b, a, 0), (-ac, -bc, a^2 + b^2) and (a, b, c), each taken to length 1. When a and b
/// are both 0 the point is returned as it is, whatever c is. Whole parts beyond the 32-bit range are
/// held to its ends, infinities too; a not-a-number counts as 0. Allocates nothing.
LOOPWISE_API PointR3 ProjectPointF(PointR3 point, PointR3 direction);

/// Projects \p chain along one of 60 fixed directions (the atoms of a C60 fullerene) with
/// ProjectPointF(): one edge per segment in chain order, ready for TwoSegmentsCrossedSimple().
///
/// \param chain           read only; fewer than two atoms give no edge
/// \param directionIndex  any int: the absolute value modulo 60 counts (8 for the smallest int)
/// \param closed          whether an edge from the last atom to the first is added at the end, also
///                        when the chain stores its first atom at its end again
/// \return the edges. Allocates.
///
/// Calls FillFulerenData() first.
LOOPWISE_API std::vector<Edge> ProjectChain(const std::vector<ChainAtom>& chain, int directionIndex, bool closed);

/// @}
/// \addtogroup closure
/// @{

/// Makes the library's two tables of directions ready and seeds std::rand() from the clock, once.
///
/// Every closure does this on entry, so nobody has to call it first. A caller who wants repeatable
/// random closures calls it and then std::srand() with a seed: the library never seeds again. The
/// first call is not synchronised; programs with threads make it before they start them. Later
/// calls do nothing. Allocates nothing.
LOOPWISE_API void FillFulerenData();

/// Closes \p chain through one far atom: appends an atom in a random direction from the centre, at
/// \p scale times RadiusOfChain() from it, numbered after the last atom.
///
/// The direction is one of 400 spread evenly over the sphere; exactly one std::rand() is drawn.
///
/// \param chain  edited in place; an empty one stays empty, with a warning on std::clog
/// \param scale  above 1 puts the new atom outside of all others; not checked. The farther it is, the
///               nearer to parallel are the two new segments
/// \retval 0  closed, or nothing to close
/// \retval -1 the direction has no length (never with the built-in table); nothing changed
///
/// Identifiers wrap around after 2147483647. Allocates when the chain has no room for one atom.
LOOPWISE_API int CloseChain_1point(std::vector<ChainAtom>& chain, double scale);

/// Closes every component of \p structure through a far atom of its own: CloseChain_1point() for
/// each, at \p scale times DiameterOfStructure() from the component's centre.
///
/// The directions are different rows of the first 60 of the table; one std::rand() is drawn per
/// component and one more for every row that was taken already.
///
/// \param structure  edited in place; one that IsEmptyStructure() stays as it is, with a warning
/// \param scale      not checked
/// \retval 0  closed, or nothing to close
/// \retval -1 more than 60 components: nothing is changed or drawn
///
/// Allocates. When memory runs out, the components before that one keep their new atom.
LOOPWISE_API int CloseChains_1point(std::vector<std::vector<ChainAtom>>& structure, double scale);

/// Closes \p chain by moving both ends out in one direction of the table: appends the last atom and
/// then the first, both shifted by 1.02 times DiameterOfChain() along it, numbered after the last
/// atom. The same direction gives the same closure: this one draws no random number.
///
/// \param chain           edited in place; an empty one stays empty, with a warning on std::clog
/// \param directionIndex  row of the table of 400 directions spread evenly over the sphere, 0 to 399
/// \retval 0  closed, or nothing to close
/// \retval -1 \p directionIndex is out of range; nothing changed
///
/// Identifiers wrap around after 2147483647. Allocates when the chain has no room for two atoms.
LOOPWISE_API int CloseChain_1direction_NoRandom(std::vector<ChainAtom>& chain, int directionIndex);

/// CloseChain_1direction_NoRandom() in a random direction; exactly one std::rand() is drawn, none for
/// an empty chain.
LOOPWISE_API int CloseChain_1direction(std::vector<ChainAtom>& chain);

/// Closes every component of \p structure with a direction of its own: CloseChain_1direction() for
/// each, shifted by 1.02 times DiameterOfStructure() with the atoms that earlier components got.
///
/// The directions are different rows of the table; one std::rand() is drawn per component and one
/// more for every row that was taken already.
///
/// \param structure  edited in place; one that IsEmptyStructure() stays as it is, with a warning
/// \retval 0  closed, or nothing to close
/// \retval -1 more than 400 components: nothing is changed or drawn
///
/// Allocates. When memory runs out, the components before that one keep their new atoms.
LOOPWISE_API int CloseChains_1direction(std::vector<std::vector<ChainAtom>>& structure);

/// The atoms of the shorter arc around \p centre from the direction of \p startPoint to that of
/// \p endPoint: the first in the start direction, then one every 0.175 radians (10 degrees) as long as it
/// is more than 0.05 radians short of the end direction, then one in the end direction. An arc of 0.05
/// radians or less is one atom in the end direction. Where the length of the arc is 0.05 more than a whole
/// number of steps, rounding decides whether the last atom comes twice.
///
/// \param startPoint  any point on the ray where the arc starts
/// \param endPoint    any point on the ray where the arc ends
/// \param centre      the centre of the circle
/// \param radius      the distance of every atom from the centre; 0 and negative values are allowed
/// \param lastId      the atoms are numbered from the identifier after it, wrapping around
/// \return a handful of atoms, 19 at most; none when the centre and the two directions span no plane:
///         their cross product comes out as 0 or not a number. Rounding can hide that three points lie on
///         a line; the arc then lies in a plane of rounding's choice. Distances from the centre below
///         1e-76 or above 1e76 leave the range of their products, and the atoms have no meaning.
///         A sine that rounding has carried past 1 counts as 1, so that it costs no closure its arc.
///         Allocates.
LOOPWISE_API std::vector<ChainAtom> GivePointsOnTheCircle(PointR3 startPoint, PointR3 endPoint, PointR3 centre,
                                                          double radius, int lastId);

/// Closes \p chain by an arc of a large circle around its centre between two random directions, with
/// the atoms of GivePointsOnTheCircle() at \p scale times RadiusOfChain(), numbered after the largest
/// identifier of the chain.
///
/// Two std::rand() are drawn for the two different rows of the table of 400 directions, and one more
/// for every second row that equals the first.
///
/// \param chain  edited in place; an empty one stays empty, with a warning on std::clog
/// \param scale  above 1 keeps the arc outside of all atoms; not checked
/// \retval 0  closed, or nothing to close
/// \retval -1 there is no arc, as when the centre is too far from the origin for a unit vector to
///            matter, or not finite; nothing changed
///
/// Allocates.
LOOPWISE_API int CloseChain_2points(std::vector<ChainAtom>& chain, double scale);

/// Closes every component of \p structure by an arc of its own: CloseChain_2points() for each, at
/// \p scale times DiameterOfStructure(), numbered after the largest identifier of the structure. No
/// row of the table serves twice: two std::rand() are drawn per component and one more for every row
/// that was taken already.
///
/// \param structure  edited in place; one that IsEmptyStructure() stays as it is, with a warning
/// \param scale      not checked
/// \retval 0  closed, or nothing to close
/// \retval -1 more than 200 components: nothing is changed or drawn; or a component has no arc: those
///            before it stay closed
///
/// Allocates. When memory runs out, the components before that one keep their new atoms.
LOOPWISE_API int CloseChains_2points(std::vector<std::vector<ChainAtom>>& structure, double scale);

/// Closes \p chain by an arc around its centre from the direction of its last atom to that of its
/// first, with the atoms of GivePointsOnTheCircle() at \p scale times RadiusOfChain(), numbered after
/// the largest identifier of the chain. The same chain gives the same closure.
///
/// \param chain  edited in place; an empty one stays empty, with a warning on std::clog
/// \param scale  above 1 keeps the arc outside of all atoms; not checked
/// \retval 0  closed, or nothing to close
/// \retval -1 one or two atoms, or the centre and the two ends span no plane for
///            GivePointsOnTheCircle(): the ends coincide, one lies at the centre, or the chain is straight
///            and rounding does not hide it; nothing changed
///
/// Allocates.
LOOPWISE_API int CloseChain_OUT(std::vector<ChainAtom>& chain, double scale);

/// Closes every component of \p structure by its own arc: CloseChain_OUT() for each, at \p scale times
/// DiameterOfStructure(), numbered after the largest identifier of the structure.
///
/// \param structure  edited in place; one that IsEmptyStructure() stays as it is, with a warning
/// \param scale      not checked
/// \retval 0  closed, or nothing to close
/// \retval -1 a component has no arc; those before it stay closed
///
/// Allocates. When memory runs out, the components before that one keep their new atoms.
LOOPWISE_API int CloseChains_OUT(std::vector<std::vector<ChainAtom>>& structure, double scale);

/// @}

#endif // LIBLOOPWISE_H
