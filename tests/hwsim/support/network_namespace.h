#pragma once

#include "hwsim/support/programs.h"

#include <string>

namespace TALO::Hwsim {

/// A machine beside the router: a network namespace. The router itself is the one without a name.
class NetworkNamespace {
 public:
  NetworkNamespace() = default;
  /// Makes it, with a loopback.
  explicit NetworkNamespace(const std::string& name);

  const std::string& Name() const { return name_; }

  /// The words of a program that runs in it.
  Words Inside(const Words& words) const;

  /// Moves a radio with its interface here, and returns the interface's name.
  std::string TakeRadio(int number) const;
  /// Makes a bridge, which is up.
  void MakeBridge(const std::string& bridge) const;
  void Join(const std::string& bridge, const std::string& interface) const;
  /// Gives an interface its address in a network of 256.
  void SetAddress(const std::string& interface, const std::string& address) const;

  /// Waits until this address answers.
  void ExpectPing(const std::string& address) const;
  /// Whether it answers one of a few pings.
  bool Pings(const std::string& address) const;

 private:
  std::string name_;
};

/// Two machines with a cable between them; each end has the name that is given with its machine.
void Connect(const NetworkNamespace& one, const std::string& interface, const NetworkNamespace& other,
             const std::string& otherInterface);

}  // namespace TALO::Hwsim
