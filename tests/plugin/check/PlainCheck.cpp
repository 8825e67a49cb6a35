#include "tests/plugin/check/PlainCheck.h"

#include <cmath>
#include <sstream>

namespace shorttest::testkit {
namespace {

// Fifteen significant digits; enough for the resistances and voltages of the random cases.
std::string Number(double value) {
  std::ostringstream text;
  text.precision(15);
  text << value;
  return text.str();
}

}  // namespace

void PlainCheck::Run() {
  ProgressDialogLayout layout;
  layout.buttonResult = 2;
  dialog_ = ui_.CreateProgressDialog(layout);
  try {
    brenmor_bus_delete_error();
    brenmor_bus_write(128, 0, 64);
    brenmor_bus_write(129, 0, 64);
    PlainTester::CheckError();
  } catch (...) {
    dialog_.reset();
    throw;
  }
  try {
    Passes();
  } catch (...) {
    CleanUp();
    throw;
  }
  CleanUp();
}

void PlainCheck::Passes() {
  dialog_->SetBarPosition(0);
  dialog_->Show();
  windows_ = ui_.DisableTaskWindows(dialog_->Handle());
  PlainTester::Termination(options_, true);
  long errors = ConnectionPass();
  if (errors < options_.maxError) errors += VoltagePass();
  if (errors < options_.maxError) errors += PairPass(IsolationPass());
  Report();
  Update(1.0);
}

void PlainCheck::CleanUp() {
  PlainTester::ReleaseAll(options_.cards);
  PlainTester::ReleaseBehind(options_, data_.count, data_.AllSuspended());
  PlainTester::Termination(options_, false);
  if (dialog_->GetModalResult() == 2) environment_.CancelTest();
  ui_.EnableTaskWindows(windows_);
  dialog_.reset();
}

bool PlainCheck::Update(double position) {
  ui_.ProcessMessages();
  if (dialog_->GetModalResult() != 0) return true;
  if (!dialog_->Visible()) return true;
  dialog_->SetBarPosition(static_cast<int>(std::nearbyint(dialog_->BarMaximum() * position)));
  return false;
}

int PlainCheck::ConnectionPass() {
  int errors = 0;
  if (Update(0.0)) return 0;
  PlainTester::Prepare(options_.cards, true);
  for (int i = 0; i <= high_ - 1; ++i) {
    if (Update((i + 1) / (4.0 * (high_ + 2)))) return errors;
    for (int j = i + 1; j <= high_; ++j) {
      if (data_.Get(i, j) != 2 || work_.Get(i, j) != 0) continue;
      PlainTester::Connect(options_.von + i, 0);
      PlainTester::Connect(options_.von + j, 1);
      const double ohm = PlainTester::Resistance(options_.schwelle);
      if (ohm < options_.schwelle) {
        work_.Put(i, j, 2, ohm);
      } else {
        work_.Put(i, j, 1, ohm);
        ++errors;
        if (errors >= options_.maxError) return errors;
      }
      tester_.Release(options_.von + i, 0);
      tester_.Release(options_.von + j, 1);
    }
  }
  return errors;
}

int PlainCheck::VoltagePass() {
  if (Update(0.25)) return 0;
  int k = 0;
  while (k <= high_ && data_.Get(k, k) == 9) ++k;
  PlainTester::Connect(options_.von + k, 1);
  while (k < high_) {
    ++k;
    if (Update(k / (4.0 * (high_ + 1)) + 0.25)) return 0;
    if (data_.Get(k, k) == 9) continue;
    PlainTester::Connect(options_.von + k, 0);
    const double volts =
        tester_.Discharge(options_, 0.7, k / (4.0 * (high_ + 1)) + 0.25, (k + 1) / (4.0 * (high_ + 1)) + 0.25,
                          [this](double position) { return Update(position); });
    if (volts < 0.7) {
      PlainTester::Connect(options_.von + k, 1);
      tester_.Release(options_.von + k, 0);
    } else {
      work_.Suspend(k == 1 ? 0 : k, volts);
      return options_.maxError;
    }
  }
  return 0;
}

std::vector<int> PlainCheck::IsolationPass() {
  std::vector<int> list;
  if (Update(0.5)) return {};
  PlainTester::Prepare(options_.cards, false);
  for (int i = 0; i <= high_; ++i) {
    if (Update((i + 1) / (4.0 * (high_ + 2)) + 0.5)) return {};
    if (data_.Get(i, i) == 9) continue;
    for (int k = 0; k <= high_; ++k) {
      if (k == i || work_.Get(k, i) == 2) tester_.Release(options_.von + k, 1);
    }
    PlainTester::Connect(options_.von + i, 0);
    const double ohm = PlainTester::Resistance(options_.schwelle2);
    if (ohm < options_.schwelle2) {
      list.push_back(i);
    } else {
      for (int k = 0; k <= high_; ++k) work_.Put(k, i, 1, ohm);
    }
    tester_.Release(options_.von + i, 0);
    for (int k = 0; k <= high_; ++k) {
      if (k == i || work_.Get(k, i) == 2) PlainTester::Connect(options_.von + k, 1);
    }
  }
  return list;
}

int PlainCheck::PairPass(const std::vector<int>& candidates) {
  int errors = 0;
  if (candidates.empty()) return 0;
  if (Update(0.75)) return 0;
  PlainTester::Prepare(options_.cards, true);
  const auto count = static_cast<int>(candidates.size());
  for (int a = 0; a < count; ++a) {
    if (Update((a + 1) / (4.0 * (count + 1)) + 0.75)) return errors;
    const int q = candidates[static_cast<std::size_t>(a)];
    PlainTester::Connect(options_.von + q, 1);
    for (const int p : candidates) {
      if (work_.Get(p, q) != 0 || data_.Get(p, q) == 3) continue;
      PlainTester::Connect(options_.von + p, 0);
      const double ohm = PlainTester::Resistance(options_.schwelle2);
      if (ohm < options_.schwelle2) {
        work_.Put(p, q, 2, ohm);
        if (data_.Get(p, q) != 2) ++errors;
      } else {
        work_.Put(p, q, 1, ohm);
        if (data_.Get(p, q) != 1) ++errors;
      }
      if (errors >= options_.maxError) return errors;
      tester_.Release(options_.von + p, 0);
    }
    tester_.Release(options_.von + q, 1);
  }
  return errors;
}

// --- records ---

void PlainCheck::SendError(const std::string& finding, const std::string& fields) {
  if (sent_ >= options_.maxError) return;
  log_.Add("send " + finding + (sent_ == options_.maxError - 1 ? " -  ABBRUCH" : "") + fields);
  ++sent_;
}

std::string PlainCheck::List(const std::vector<int>& indices) const {
  std::string text;
  for (const int index : indices) text += (text.empty() ? "" : ", ") + Name(index);
  return indices.size() == 1 ? text : "(" + text + ")";
}

void PlainCheck::Report() {
  if (Update(1.0)) return;
  ReportVoltages();
  ReportConnections();
  ReportShorts();
}

void PlainCheck::ReportVoltages() {
  for (int i = 0; i <= high_; ++i) {
    if (work_.Get(i, i) == 9 && data_.Get(i, i) != 9) {
      SendError("Spannung an Kanal " + Name(i), "|0.7|" + Number(work_.Volts(i)) + "|V|||");
    }
  }
}

void PlainCheck::ReportConnections() {
  int expected = 0;
  int found = 0;
  for (int i = 0; i < high_; ++i) {
    for (int j = i + 1; j <= high_; ++j) {
      if (data_.Get(i, j) != 2) continue;
      ++expected;
      if (work_.Get(i, j) == 2) {
        ++found;
      } else {
        SendError("fehlende Verbindung zwischen " + Name(i) + " und " + Name(j),
                  "|0|" + Number(work_.GetR(i, j)) + "|Ohm|" + Number(options_.schwelle) + "|0|");
      }
    }
  }
  const std::string count = std::to_string(expected);
  if (expected > 0) {
    log_.Add("send Verbindungstest|" + count + "|" + std::to_string(found) + "||" + count + "||");
  }
}

void PlainCheck::ReportShorts() {
  int shorts = 0;
  for (int i = 0; i <= high_; ++i) {
    std::vector<int> net;
    std::vector<int> shorted;
    for (int j = 0; j <= high_; ++j) {
      if (j == i || data_.Get(i, j) == 2) net.push_back(j);
      if (work_.Get(i, j) == 2 && data_.Get(i, j) == 1) shorted.push_back(j);
    }
    if (shorted.empty() || i >= shorted[0] || sent_ >= options_.maxError) continue;
    double smallest = work_.GetR(shorted[0], net[0]);
    for (const int a : shorted) {
      for (const int b : net) smallest = std::min(smallest, work_.GetR(a, b));
    }
    SendError("Kurzschluss zwischen " + List(net) + " und " + List(shorted),
              "|" + Number(options_.schwelle2) + "|" + Number(smallest) + "|Ohm|100000000000001|0|");
    ++shorts;
  }
  log_.Add("send Kurzschlusstest|0|" + std::to_string(shorts) + "||0||");
}

}  // namespace shorttest::testkit
