#pragma once

#include "bus/message.h"
#include "bus/names.h"
#include "bus/operations.h"
#include "daemon/service/endpoint.h"

#include <string>
#include <type_traits>
#include <vector>

namespace TALO::Wifid {

/// The entries that sd-bus wants for an interface, built from the rows of its operations. Keeps the texts
/// that the entries point to.
class Vtable {
 public:
  /// For at most that many methods and signals.
  explicit Vtable(std::size_t members);

  /// Appends a method whose calls go to the endpoint of the same index.
  void AddMethod(const char* name, const char* arguments, std::string_view argumentNames, const char* result,
                 std::string_view resultName, bool sensitive);
  void AddSignal(const char* name, const char* values, std::string_view valueNames);
  /// Ends it; nothing may be added after.
  const sd_bus_vtable* Finish();

 private:
  std::vector<std::string> names_;
  std::vector<sd_bus_vtable> entries_;
  std::size_t methods_ = 0;
};

/// One of the daemon's interfaces: an endpoint for each row of `Rows`, on the bus while this lives.
template <typename Rows>
class BusInterface {
 public:
  /// `admit` is asked before each call.
  explicit BusInterface(const Admission& admit) : vtable_(Rows::size + kMaximumSignals) {
    endpoints_.reserve(Rows::size);
    Rows::ForEach([&, this](auto row) {
      using Row = decltype(row);
      endpoints_.emplace_back(Row::name.text, admit);
      vtable_.AddMethod(Row::name.text, Row::ArgumentsCodec::signature.text, Row::argumentNames.View(),
                        Row::ResultCodec::signature.text, Row::resultName.View(), Row::sensitive);
    });
  }

  /// Offers a signal too; before Attach().
  template <typename Signal>
  void Offer() {
    vtable_.AddSignal(Signal::name.text, Signal::ValuesCodec::signature.text, Signal::valueNames.View());
  }

  /// Sets what is done with a call of `Method`; `handler(arguments..., Responder)` answers now or later.
  template <auto Method, typename Handler>
  void Handle(Handler handler) {
    std::size_t index = 0;
    Rows::ForEach([&, this](auto row) {
      using Row = decltype(row);
      if constexpr (std::is_same_v<Wifi::Bus::MethodTag<Row::method>, Wifi::Bus::MethodTag<Method>>) {
        endpoints_.at(index).template Handle<Method>(handler);
      }
      ++index;
    });
  }

  /// Offers the interface. Throws CodecError when the bus does not take it.
  void Attach(sd_bus* bus) {
    sd_bus_slot* slot = nullptr;
    Wifi::Bus::CheckMessage(sd_bus_add_object_vtable(bus, &slot, Wifi::Bus::kObjectPath, Rows::name.text,
                                                     vtable_.Finish(), endpoints_.data()));
    slot_.reset(slot);
  }

 private:
  static constexpr std::size_t kMaximumSignals = 16;

  std::vector<Endpoint> endpoints_;
  Vtable vtable_;
  Wifi::Bus::Slot slot_;
};

}  // namespace TALO::Wifid
