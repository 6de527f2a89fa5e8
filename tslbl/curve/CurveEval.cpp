#include <tslbl/curve/CurveEval.h>

#include <tslbl/closed/common/BinaryStream.h>
#include <tslbl/closed/common/XMLBuilder.h>
#include <tslbl/closed/common/XMLParser.h>
#include <tslbl/curve/CommandTable.h>
#include <tslbl/curve/EvalImpl.h>
#include <stdexcept>

namespace TslBL {
namespace {

constexpr std::uint32_t kVersion = 2;

// A fresh command of the row.
CurveEval Make(const CommandRow* row) {
  if (row == nullptr) throw std::runtime_error("Invalid curve evaluation type.");
  return row->make();
}

}  // namespace

CurveEval::CurveEval(const CurveEval& other) : impl_(other.impl_->Clone()) {}
CurveEval::~CurveEval() = default;

CurveEval& CurveEval::operator=(const CurveEval& other) {
  if (this != &other) impl_.reset(other.impl_->Clone());
  return *this;
}

bool CurveEval::operator==(const CurveEval& other) const {
  return this == &other || (Type() == other.Type() && impl_->Equals(*other.impl_));
}

EvalType CurveEval::Type() const { return impl_->Type(); }
std::wstring CurveEval::TypeText() const { return impl_->TypeText(); }

bool CurveEval::Execute(Curve& curve, Changed& changed, std::wstring& error) const {
  return impl_->Execute(curve, changed, error);
}

void CurveEval::Serialize(BinaryReader& reader) {
  std::uint32_t version = 0;
  reader >> version;
  if (version != kVersion) throw std::runtime_error("Unknown CurveEval version.");
  std::uint32_t type = 0;
  reader >> type;
  if (!reader.Good()) throw std::runtime_error("Unexpected end of stream.");
  CurveEval fresh = Make(FindCommand(static_cast<EvalType>(type)));
  reader >> *fresh.impl_;
  impl_.swap(fresh.impl_);
}

void CurveEval::Serialize(BinaryWriter& writer) const { writer << kVersion << Number(Type()) << *impl_; }

void CurveEval::Serialize(XMLParser& parser) {
  if (!parser.StartNode(L"CurveEval")) return;
  // The element is left also when what it holds is refused: the next one can still be read.
  const std::unique_ptr<XMLParser, void (*)(XMLParser*)> element(&parser, [](XMLParser* p) { p->EndNode(); });
  std::wstring text;
  CurveEval fresh = parser.QAttribute(L"Type", text) ? Make(FindCommand(text)) : CurveEval();
  fresh.impl_->Serialize(parser);
  impl_.swap(fresh.impl_);
}

void CurveEval::Serialize(XMLBuilder& builder) const {
  builder.StartNode(L"CurveEval");
  builder.WAttribute(L"Type", TypeText());
  impl_->Serialize(builder);
  builder.EndNode();
}

void CurveEval::Serialize(std::wstring& text) const {
  std::wstring params;
  impl_->Serialize(params);
  text = L"Cmd:\t" + TypeText() + L"\r\n" + params;
}

void CurveEvalsText(const std::vector<CurveEval>& evals, std::wstring& text) {
  for (const CurveEval& eval : evals) {
    std::wstring one;
    eval.Serialize(one);
    text += one;
  }
}

void AddCurveEval(XMLBuilder& builder, const CurveEval& eval) { eval.Serialize(builder); }

void LoadCurveEval(XMLParser& parser, std::vector<CurveEval>& evals) {
  CurveEval eval;
  eval.Serialize(parser);
  evals.push_back(eval);
}

}  // namespace TslBL
