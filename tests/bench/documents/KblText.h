#pragma once

#include <string>
#include <vector>

#include "bench/documents/KblReader.h"

namespace kxbench::documents {

/// Puts KBL files together for tests: connectors with cavities, wires between contact points.
class KblText {
 public:
  /// A housing with one slot; its id is its name.
  KblText& Housing(const std::string& id, const std::vector<std::string>& cavities) {
    head_ += "<Connector_housing id=\"" + id + "\"><Slots id=\"" + id + ".s\">";
    for (const std::string& cavity : cavities) {
      head_ += "<Cavities id=\"" + id + '.' + cavity + "\"><Cavity_number>" + cavity +
               "</Cavity_number></Cavities>";
    }
    head_ += "</Slots></Connector_housing>\n";
    return *this;
  }

  /// An occurrence of a housing. Its contact points have the ids "NAME:CAVITY".
  KblText& Connector(const std::string& name, const std::string& housing,
                     const std::vector<std::string>& cavities, const std::string& usage = {}) {
    std::string points;
    std::string slots;
    for (const std::string& cavity : cavities) {
      points += "<Contact_points id=\"" + name + ':' + cavity + "\"><Id>" + cavity +
                "</Id><Contacted_cavity>" + name + '/' + cavity + "</Contacted_cavity></Contact_points>";
      slots += "<Cavities id=\"" + name + '/' + cavity + "\"><Part>" + housing + '.' + cavity +
               "</Part></Cavities>";
    }
    return InHarness("<Connector_occurrence id=\"id_" + name + "\"><Id>" + name + "</Id>" +
                     (usage.empty() ? std::string() : "<Usage>" + usage + "</Usage>") + "<Part>" + housing +
                     "</Part>" + points + "<Slots id=\"" + name + "/s\"><Part>" + housing + ".s</Part>" +
                     slots + "</Slots></Connector_occurrence>");
  }

  /// A wire of its own between contact points.
  KblText& Wire(const std::vector<std::string>& points, const std::string& signal = {}) {
    const std::string id = "w" + std::to_string(++wires_);
    InHarness("<General_wire_occurrence xsi:type=\"kbl:Wire_occurrence\" id=\"" + id + "\"/>");
    return Connection(id, points, signal);
  }

  KblText& Connection(const std::string& wire, const std::vector<std::string>& points,
                      const std::string& signal = {}) {
    std::string text = "<Connection><Signal_name>" + signal + "</Signal_name><Wire>" + wire + "</Wire>";
    for (const std::string& point : points) {
      text += "<Extremities><Position_on_wire>0</Position_on_wire><Contact_point>" + point +
              "</Contact_point></Extremities>";
    }
    return InHarness(text + "</Connection>");
  }

  /// Beside the harness, and inside of it; a line each.
  KblText& InContainer(const std::string& text) {
    head_ += text + '\n';
    return *this;
  }
  KblText& InHarness(const std::string& text) {
    harness_ += text + '\n';
    return *this;
  }

  std::string Text() const {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<kbl:KBL_container "
           "xmlns:kbl=\"http://www.prostep.org/Car_electric_container/KBL2.3/KBLSchema\">\n" +
           head_ + "<Harness>\n" + harness_ + "</Harness>\n</kbl:KBL_container>\n";
  }

 private:
  std::string head_;
  std::string harness_;
  int wires_ = 0;
};

inline WiringDocument ReadKblText(const std::string& text) { return ReadKbl("h.kbl", text); }

/// Two connectors of three cavities.
inline KblText TwoConnectors() {
  return KblText()
      .Housing("H", {"1", "2", "3"})
      .Connector("X1", "H", {"1", "2", "3"})
      .Connector("X2", "H", {"1", "2", "3"});
}

}  // namespace kxbench::documents
