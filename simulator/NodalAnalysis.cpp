#include "simulator/NodalAnalysis.h"

#include <Eigen/SparseCholesky>
#include <Eigen/SparseCore>
#include <algorithm>
#include <stdexcept>

namespace simulator {
namespace {

// The long double of x86 carries 64 bits: with it and one refinement a reading stays exact to the displayed
// digits where the conductances of a circuit lie fifteen orders of magnitude apart.
using Real = long double;
using Vector = Eigen::Matrix<Real, Eigen::Dynamic, 1>;
using Matrix = Eigen::SparseMatrix<Real>;

constexpr Node Reference = 1;
constexpr int Refinements = 2;

/// Unknown of a node: the reference has none, the nodes after it move up.
constexpr Eigen::Index Unknown(Node node) {
  return static_cast<Eigen::Index>(node < Reference ? node : node - 1);
}

Eigen::Index UnknownCount(const std::vector<Branch>& branches) {
  Node highest = Reference;
  for (const Branch& branch : branches) highest = std::max({highest, branch.a, branch.b});
  return static_cast<Eigen::Index>(highest);
}

Matrix ConductanceMatrix(const std::vector<Branch>& branches, Eigen::Index unknowns) {
  std::vector<Eigen::Triplet<Real>> entries;
  entries.reserve(3 * branches.size());
  for (const Branch& branch : branches) {
    const Real siemens = branch.siemens;
    if (branch.a != Reference) entries.emplace_back(Unknown(branch.a), Unknown(branch.a), siemens);
    if (branch.b != Reference) entries.emplace_back(Unknown(branch.b), Unknown(branch.b), siemens);
    if (branch.a != Reference && branch.b != Reference) {
      // The factorisation reads the lower triangle alone.
      const auto [column, row] = std::minmax({Unknown(branch.a), Unknown(branch.b)});
      entries.emplace_back(row, column, -siemens);
    }
  }
  Matrix matrix(unknowns, unknowns);
  matrix.setFromTriplets(entries.begin(), entries.end());
  return matrix;
}

/// Current that is missing at every node for Kirchhoff's law to hold. Taken branch by branch from the
/// differences of the potentials, which keeps it exact where two nodes are almost equal.
Vector MissingCurrents(const std::vector<Branch>& branches, const Vector& potentials, Real ampere) {
  const auto potential = [&](Node node) { return node == Reference ? Real{0} : potentials[Unknown(node)]; };
  Vector missing = Vector::Zero(potentials.size());
  missing[Unknown(0)] = ampere;
  for (const Branch& branch : branches) {
    const Real fromAToB = branch.siemens * (potential(branch.a) - potential(branch.b) - Real{branch.volts});
    if (branch.a != Reference) missing[Unknown(branch.a)] -= fromAToB;
    if (branch.b != Reference) missing[Unknown(branch.b)] += fromAToB;
  }
  return missing;
}

}  // namespace

double VoltageAcross(const std::vector<Branch>& branches, double ampere) {
  const Eigen::Index unknowns = UnknownCount(branches);
  Vector potentials = Vector::Zero(unknowns);
  if (unknowns == 1) {  // all branches lie side by side: Ohm's law is enough
    Real siemens = 0;
    for (const Branch& branch : branches) siemens += branch.siemens;
    return static_cast<double>(MissingCurrents(branches, potentials, ampere)[0] / siemens);
  }
  const Eigen::SimplicialLDLT<Matrix> solver(ConductanceMatrix(branches, unknowns));
  if (solver.info() != Eigen::Success) throw std::runtime_error("the circuit cannot be solved");
  for (int i = 0; i <= Refinements; ++i) {
    potentials += solver.solve(MissingCurrents(branches, potentials, ampere));
  }
  return static_cast<double>(potentials[Unknown(0)]);
}

}  // namespace simulator
