#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "bench/diagnosis/Diagnosis.h"
#include "bench/diagnosis/FaultText.h"
#include "bench/documents/WiringDocument.h"
#include "bench/wiring/ChannelNames.h"
#include "bench/wiring/ExpectationFacts.h"

/// Wiring diagrams, as SVG or as a page for a browser.
///
/// Connectors are boxes in two columns, nets are lines in the channel between them: one vertical line each,
/// with a horizontal one to every pin, and a dot where a line branches. Lines of different nets cross, but
/// none lies on another, on a box or on a text. The same input gives the same bytes. Everything that colours
/// tell is told by dashes, widths or words too, so that it survives a black-and-white printer.
///
/// Texts are UTF-8; what is not becomes U+FFFD. Nothing here throws but for want of memory, unless it says
/// so.

namespace kxbench::drawing {

/// A contact of the harness, as it is drawn.
struct DrawnPin {
  std::int32_t channel = 0;  ///< 0: not known
  std::string connector;     ///< empty: on none that is known; such pins stand in blocks by channel
  std::string name;          ///< the pin's on its connector; without connector the channel's; may be empty
  std::string label;         ///< how it is called in texts, "A1-L"; empty: "CONNECTOR.NAME"
  bool suspended = false;    ///< takes no part in a check
};

/// Pins that are connected with one another. Pins in no net, and those alone in one, are drawn without a
/// line.
struct DrawnNet {
  std::string name;               ///< empty: none
  std::vector<std::size_t> pins;  ///< indices of HarnessPicture::pins; each pin is in one net at most
};

/// What a picture shows when nothing is wrong. Pins stand on their connector in this order; connectors are
/// placed so that few lines cross.
struct HarnessPicture {
  std::string title;
  std::vector<DrawnPin> pins;
  std::vector<DrawnNet> nets;
  std::vector<std::pair<std::size_t, std::size_t>> excluded;  ///< pairs of pins that a check leaves out
};

/// The picture of an expectation, with its channels' names split into connector and pin (wiring::ContactsOf).
HarnessPicture PictureOf(const wiring::ExpectationFacts& facts, const wiring::ChannelNames& names,
                         const std::string& title);

/// The picture of a document. `channels` are those of its pins, where a map gave them any.
HarnessPicture PictureOf(const documents::WiringDocument& document, const std::string& title,
                         const std::map<documents::Pin, std::int32_t>& channels = {});

/// A fault to be marked: its number in the picture is its place in the list, from 1.
struct FaultMark {
  /// `kind` and `channels` suffice; pieces, moves and closest contacts make the marks more exact.
  diagnosis::Fault fault;
  std::string text;                       ///< one line
  std::vector<std::string> alternatives;  ///< lines on what it may be instead
};

/// Every fault of a diagnosis, hints last.
std::vector<FaultMark> MarksOf(const diagnosis::Diagnosis& diagnosis, const diagnosis::ChannelLabel& label);

/// A fault of which only kind ("open", see diagnosis::KindWord), channels and text were kept. A kind that is
/// not known is marked as compound.
FaultMark MarkOf(const std::string& kind, const std::vector<std::int32_t>& channels, const std::string& text);

/// A diagnosis that a program wrote.
struct KeptDiagnosis {
  bool failed = false;  ///< by its verdict, or by a fault that is no hint
  std::vector<FaultMark> marks;
};

/// The output of `kxbench diagnose --format json`. Where its verdict is "fail" and no fault says why, the
/// first mark does, which has no channels. Throws std::runtime_error, with one clause that says why, for
/// anything else, and for the diagnosis of a harness with other nets than the picture's.
KeptDiagnosis DiagnosisFromJson(const std::string& json, const HarnessPicture& picture);

/// "2 faults marked"; "1 fault marked, 1 in the list alone" where the picture has no channel of a fault.
std::string MarkedText(const HarnessPicture& picture, const std::vector<FaultMark>& marks);

/// What of the faults the picture cannot show, a line each without its end.
std::vector<std::string> UnmarkedTexts(const HarnessPicture& picture, const std::vector<FaultMark>& marks);

struct DrawingOptions {
  bool colours = true;    ///< nets in several dark colours while no fault is marked; else all in black
  bool faultList = true;  ///< the texts of the faults below the drawing
  std::string idPrefix;   ///< in front of every id, where a page holds several drawings: letters and digits
};

/// An <svg> element, without XML declaration: a file as it stands, and a part of a page as well. Its size is
/// in CSS pixels (1/96 inch) at a text height of 11 and scales as a whole.
std::string SvgOf(const HarnessPicture& picture, const std::vector<FaultMark>& marks = {},
                  const DrawingOptions& options = {});

/// A whole page: the drawing, the faults, a list of the nets. A click on a net, in the drawing or in the
/// list, shows it alone; Escape shows all again. Its script is in the page; nothing is loaded from elsewhere.
std::string HtmlOf(const HarnessPicture& picture, const std::vector<FaultMark>& marks = {});

}  // namespace kxbench::drawing
