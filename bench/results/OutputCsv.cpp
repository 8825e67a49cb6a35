#include "bench/results/CsvRow.h"
#include "bench/results/Outputs.h"

namespace kxbench::results {

namespace {

constexpr char HeadLine[] =
    "id,started,seconds,verdict,serial,part,operator,station,expectation,sha256,diagnosis,error,"
    "number,text,value,lower,upper,unit\r\n";

CsvRow RowBegin(const Result& result) {
  CsvRow row;
  row.Text(result.id).Text(TimeText(result.started)).Number(result.seconds);
  row.Text(std::string(VerdictWord(result.verdict))).Text(result.serial).Text(result.part);
  row.Text(result.operatorName).Text(result.station).Text(result.expectation);
  row.Text(result.expectationSha256).Text(DiagnosisText(result)).Text(result.error);
  return row;
}

std::string RowsOf(const Result& result) {
  const CsvRow begin = RowBegin(result);
  std::string rows;
  double number = 0;
  for (const ResultRecord& record : result.records) {
    CsvRow row = begin;
    row.Number(++number).Text(record.text).Number(record.value).Number(record.lower).Number(record.upper);
    rows += row.Text(record.unit).Line();
  }
  if (!rows.empty()) return rows;
  CsvRow row = begin;
  for (int empty = 0; empty < 6; ++empty) row.Text("");
  return row.Line();
}

}  // namespace

std::string ResultsCsv(const std::vector<ResultPage>& pages) {
  std::string text = HeadLine;
  for (const ResultPage& page : pages) text += RowsOf(page.result);
  return text;
}

}  // namespace kxbench::results
