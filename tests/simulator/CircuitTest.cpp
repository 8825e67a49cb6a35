#include <gtest/gtest.h>

#include <Eigen/Dense>
#include <limits>
#include <random>

#include "simulator/Block.h"
#include "simulator/Circuit.h"

namespace simulator {
namespace {

constexpr double Open = std::numeric_limits<double>::infinity();

TEST(CircuitResistance, SeparateNodesAreOpen) { EXPECT_EQ(Circuit(2).Resistance(0, 1), Open); }

TEST(CircuitResistance, JoinedNodesHaveNone) {
  Circuit circuit(3);
  circuit.Join(0, 2);
  circuit.AddResistor(2, 1, 0.0);
  EXPECT_EQ(circuit.Resistance(0, 1), 0.0);
}

TEST(CircuitResistance, SeriesAddsUp) {
  Circuit circuit(4);
  circuit.AddResistor(0, 2, 100.0);
  circuit.AddResistor(2, 3, 20.0);
  circuit.AddResistor(3, 1, 3.0);
  EXPECT_DOUBLE_EQ(circuit.Resistance(0, 1), 123.0);
}

TEST(CircuitResistance, ParallelSharesTheCurrent) {
  Circuit circuit(2);
  circuit.AddResistor(0, 1, 30.0);
  circuit.AddResistor(1, 0, 60.0);
  EXPECT_DOUBLE_EQ(circuit.Resistance(0, 1), 20.0);
}

TEST(CircuitResistance, UnbalancedBridge) {
  // 1 and 2 Ohm on one side, 3 and 4 on the other, 5 across; in whole fractions 155/74.
  Circuit circuit(4);
  circuit.AddResistor(0, 2, 1.0);
  circuit.AddResistor(2, 1, 2.0);
  circuit.AddResistor(0, 3, 3.0);
  circuit.AddResistor(3, 1, 4.0);
  circuit.AddResistor(2, 3, 5.0);
  EXPECT_DOUBLE_EQ(circuit.Resistance(0, 1), 155.0 / 74.0);
}

TEST(CircuitResistance, CornerToCornerOfACubeOfOneOhms) {
  Circuit circuit(8);
  for (Node node = 0; node < 8; ++node) {
    for (const Node bit : {1U, 2U, 4U}) {
      if ((node & bit) == 0) circuit.AddResistor(node, node | bit, 1.0);
    }
  }
  EXPECT_DOUBLE_EQ(circuit.Resistance(0, 7), 5.0 / 6.0);
  EXPECT_DOUBLE_EQ(circuit.Resistance(0, 1), 7.0 / 12.0);
}

TEST(CircuitResistance, BranchBetweenJoinedNodesCarriesNoCurrent) {
  Circuit circuit(3);
  circuit.AddResistor(0, 2, 5.0);
  circuit.AddResistor(0, 1, 10.0);
  circuit.Join(0, 2);
  EXPECT_DOUBLE_EQ(circuit.Resistance(0, 1), 10.0);
}

TEST(CircuitResistance, SourcesCountAsTheirSeriesResistance) {
  Circuit circuit(2);
  circuit.AddSource(0, 1, 24.0, 8.0);
  EXPECT_DOUBLE_EQ(circuit.Resistance(0, 1), 8.0);
}

TEST(CircuitResistance, StaysExactBesideInsulation) {
  // Two rings of joints of 1 mOhm, with 1 TOhm between them at three places.
  Circuit circuit(6);
  for (const Node ring : {0U, 3U}) {
    circuit.AddResistor(ring, ring + 1, 1e-3);
    circuit.AddResistor(ring + 1, ring + 2, 1e-3);
    circuit.AddResistor(ring + 2, ring, 1e-3);
  }
  for (const Node place : {0U, 1U, 2U}) circuit.AddResistor(place, place + 3, 1e12);
  EXPECT_NEAR(circuit.Resistance(0, 3) / (1e12 / 3.0), 1.0, 1e-12);
  EXPECT_NEAR(circuit.Resistance(0, 1) / (2e-3 / 3.0), 1.0, 1e-12);
}

TEST(CircuitResistance, LongRingNeedsNoCallStack) {
  constexpr Node Size = 100'000;
  Circuit circuit(Size);
  for (Node node = 0; node < Size; ++node) circuit.AddResistor(node, (node + 1) % Size, 1.0);
  EXPECT_NEAR(circuit.Resistance(0, Size / 2), static_cast<double>(Size) / 4.0, 1e-6);
}

TEST(CircuitVoltage, FloatingNodesHaveNone) {
  Circuit circuit(3);
  circuit.AddSource(0, 2, 24.0, 1.0);
  EXPECT_EQ(circuit.Voltage(0, 1), 0.0);
}

TEST(CircuitVoltage, PositiveEndIsTheFirst) {
  Circuit circuit(2);
  circuit.AddSource(0, 1, 24.0, 1.0);
  EXPECT_DOUBLE_EQ(circuit.Voltage(0, 1), 24.0);
  EXPECT_DOUBLE_EQ(circuit.Voltage(1, 0), -24.0);
}

TEST(CircuitVoltage, SourcesInSeriesAddUp) {
  Circuit circuit(3);
  circuit.AddSource(0, 2, 24.0, 1.0);
  circuit.AddSource(1, 2, 5.0, 1.0);
  EXPECT_DOUBLE_EQ(circuit.Voltage(0, 1), 19.0);
}

TEST(CircuitVoltage, DividerDivides) {
  Circuit circuit(3);
  circuit.AddSource(2, 1, 12.0, 1.0);
  circuit.AddResistor(2, 0, 2.0);
  circuit.AddResistor(0, 1, 3.0);
  EXPECT_DOUBLE_EQ(circuit.Voltage(0, 1), 6.0);
}

TEST(CircuitVoltage, ShortedSourceDropsAtItsSeriesResistance) {
  Circuit circuit(2);
  circuit.AddSource(0, 1, 10.0, 0.1);
  circuit.AddResistor(0, 1, 0.1);
  EXPECT_DOUBLE_EQ(circuit.Voltage(0, 1), 5.0);
}

TEST(CircuitVoltage, SourceThatHangsOnOneNodeChangesNothing) {
  Circuit circuit(4);
  circuit.AddResistor(0, 1, 10.0);
  circuit.AddSource(0, 2, 24.0, 1.0);
  circuit.AddResistor(0, 3, 1.0);
  circuit.AddResistor(2, 3, 1.0);
  EXPECT_EQ(circuit.Voltage(0, 1), 0.0);
}

TEST(CurrentCarryingBlock, LeavesOutWhatHangsOnOneNode) {
  const std::vector<Branch> branches{
      {0, 2, 1.0, 0.0}, {2, 1, 1.0, 0.0},                    // the way from 0 to 1
      {2, 3, 1.0, 0.0}, {3, 4, 1.0, 0.0}, {4, 2, 1.0, 0.0},  // a ring that hangs on 2
      {0, 5, 1.0, 0.0}, {0, 5, 1.0, 0.0},                    // a pair that hangs on 0
      {1, 6, 1.0, 0.0},                                      // a dead end
      {7, 8, 1.0, 0.0},                                      // something else
  };
  EXPECT_EQ(CurrentCarryingBlock(branches, 9, 0, 1).size(), 2U);
  EXPECT_EQ(CurrentCarryingBlock(branches, 9, 3, 4).size(), 3U);
  EXPECT_EQ(CurrentCarryingBlock(branches, 9, 0, 7).size(), 0U);
}

// A second opinion on circuits that nobody worked out by hand: the pseudo-inverse of the whole conductance
// matrix, dense and in double precision, without any cutting down to a block.
class RandomCircuit : public testing::TestWithParam<unsigned> {
 protected:
  static constexpr Node Size = 14;

  RandomCircuit() : random_(GetParam()), conductances_(Eigen::MatrixXd::Zero(Size, Size)), currents_(Size) {
    currents_.setZero();
    const auto branchCount = static_cast<int>(Pick(6, 30));
    for (int i = 0; i < branchCount; ++i) {
      const Node a = Pick(0, Size - 1);
      const Node b = Pick(0, Size - 1);
      if (a == b) continue;
      const double ohm = std::uniform_real_distribution<double>(0.1, 100.0)(random_);
      if (Pick(0, 3) == 0) {
        const double volts = std::uniform_real_distribution<double>(-30.0, 30.0)(random_);
        circuit_.AddSource(a, b, volts, ohm);
        Note(a, b, ohm, volts);
      } else {
        circuit_.AddResistor(a, b, ohm);
        Note(a, b, ohm, 0.0);
      }
    }
  }

  Node Pick(Node low, Node high) { return std::uniform_int_distribution<Node>(low, high)(random_); }

  void Note(Node nodeA, Node nodeB, double ohm, double volts) {
    const auto a = static_cast<Eigen::Index>(nodeA);
    const auto b = static_cast<Eigen::Index>(nodeB);
    conductances_(a, a) += 1.0 / ohm;
    conductances_(b, b) += 1.0 / ohm;
    conductances_(a, b) -= 1.0 / ohm;
    conductances_(b, a) -= 1.0 / ohm;
    currents_[a] += volts / ohm;
    currents_[b] -= volts / ohm;
  }

  std::mt19937 random_;
  Circuit circuit_{Size};
  Eigen::MatrixXd conductances_;
  Eigen::VectorXd currents_;
};

TEST_P(RandomCircuit, AgreesWithThePseudoInverse) {
  const Eigen::MatrixXd inverse = conductances_.completeOrthogonalDecomposition().pseudoInverse();
  int connected = 0;
  for (Node a = 0; a < Size; ++a) {
    for (Node b = 0; b < a; ++b) {
      Eigen::VectorXd probe = Eigen::VectorXd::Zero(Size);
      probe[static_cast<Eigen::Index>(a)] = 1.0;
      probe[static_cast<Eigen::Index>(b)] = -1.0;
      // Connected: the current from a to b comes out of the matrix as it went in.
      const bool isConnected = (conductances_ * (inverse * probe) - probe).norm() < 1e-6;
      if (isConnected) {
        ++connected;
        EXPECT_NEAR(circuit_.Resistance(a, b), probe.dot(inverse * probe), 1e-8) << a << " " << b;
        EXPECT_NEAR(circuit_.Voltage(a, b), probe.dot(inverse * currents_), 1e-8) << a << " " << b;
      } else {
        EXPECT_EQ(circuit_.Resistance(a, b), Open) << a << " " << b;
        EXPECT_EQ(circuit_.Voltage(a, b), 0.0) << a << " " << b;
      }
    }
  }
  EXPECT_GT(connected, 0);
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomCircuit, testing::Range(1U, 41U));

}  // namespace
}  // namespace simulator
