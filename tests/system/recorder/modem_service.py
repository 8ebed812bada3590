"""A stand-in for the modem service, as a template for python3-dbusmock: one LTE modem that is registered and can
connect, with the objects and properties that NetworkManager reads from org.freedesktop.ModemManager1. Its data
interface is a link that the test makes (parameter "interface"), so that real bytes flow."""
import subprocess

import dbus
from dbusmock import MOCK_IFACE, get_object

BUS_NAME = "org.freedesktop.ModemManager1"
MAIN_OBJ = "/org/freedesktop/ModemManager1"
SYSTEM_BUS = True
IS_OBJECT_MANAGER = True

ROOT = "org.freedesktop.ModemManager1"
MODEM = ROOT + ".Modem"
SIMPLE = MODEM + ".Simple"
MODEM_3GPP = MODEM + ".Modem3gpp"
BEARER = ROOT + ".Bearer"
SIM = ROOT + ".Sim"

MODEM_PATH = MAIN_OBJ + "/Modem/0"
BEARER_PATH = MAIN_OBJ + "/Bearer/0"
SIM_PATH = MAIN_OBJ + "/SIM/0"

STATE_REGISTERED, STATE_DISCONNECTING, STATE_CONNECTING, STATE_CONNECTED = 8, 9, 10, 11
PORT_NET, PORT_QMI = 2, 6
IP_METHOD_STATIC = 2

u32 = dbus.UInt32


def no_paths():
    return dbus.Array([], signature="o")


def dictionary(values):
    return dbus.Dictionary(values, signature="sv")


def load(mock, parameters):
    mock.interface = parameters.get("interface", "wwan0")
    mock.on_connect = None
    mock.AddProperties(ROOT, {"Version": "1.20.4"})
    mock.AddMethods(ROOT, [("ScanDevices", "", "", ""), ("SetLogging", "s", "", "")])


def update(target, interface, changes):
    # UpdateProperties() of the mock cannot carry dictionaries, so the signal is sent by hand.
    target.props[interface].update(changes)
    target.EmitSignal(dbus.PROPERTIES_IFACE, "PropertiesChanged", "sa{sv}as",
                      [interface, dictionary(changes), dbus.Array([], signature="s")])


def change_state(modem, new, reason=0):
    old = int(modem.props[MODEM]["State"])
    update(modem, MODEM, {"State": dbus.Int32(new)})
    modem.EmitSignal(MODEM, "StateChanged", "iiu", [dbus.Int32(old), dbus.Int32(new), u32(reason)])


def connect(modem, wanted):
    main = get_object(MAIN_OBJ)
    if main.on_connect:
        subprocess.run(main.on_connect, shell=True, check=True)
    change_state(modem, STATE_CONNECTING)
    address = {"method": u32(IP_METHOD_STATIC), "address": "198.51.100.2", "prefix": u32(24),
               "gateway": "198.51.100.1", "dns1": "198.51.100.1", "mtu": u32(1500)}
    update(get_object(BEARER_PATH), BEARER,
           {"Properties": dictionary(wanted), "Connected": True, "Interface": main.interface,
            "Ip4Config": dictionary(address)})
    update(modem, MODEM, {"Bearers": dbus.Array([dbus.ObjectPath(BEARER_PATH)], signature="o")})
    change_state(modem, STATE_CONNECTED, 1)
    return dbus.ObjectPath(BEARER_PATH)


def disconnect(modem):
    change_state(modem, STATE_DISCONNECTING)
    update(get_object(BEARER_PATH), BEARER,
           {"Connected": False, "Interface": "", "Ip4Config": dictionary({"method": u32(0)})})
    change_state(modem, STATE_REGISTERED, 1)


def sim_properties():
    return {"Active": True, "SimIdentifier": "8900000000000000001", "Imsi": "001010000000001", "Eid": "",
            "OperatorIdentifier": "00101", "OperatorName": "Test Net",
            "EmergencyNumbers": dbus.Array([], signature="s"), "SimType": u32(1)}


def bearer_properties():
    return {"Interface": "", "Connected": False, "Suspended": False, "Multiplexed": False,
            "ConnectionError": dbus.Struct(("", ""), signature="ss"),
            "Ip4Config": dictionary({"method": u32(0)}), "Ip6Config": dictionary({"method": u32(0)}),
            "Stats": dictionary({}), "ReloadStatsSupported": True, "IpTimeout": u32(20), "BearerType": u32(1),
            "ProfileId": dbus.Int32(-1), "Properties": dictionary({})}


def modem_properties(interface):
    ports = [dbus.Struct(("cdc-wdm0", u32(PORT_QMI)), signature="su"),
             dbus.Struct((interface, u32(PORT_NET)), signature="su")]
    modes = dbus.Struct((u32(8), u32(0)), signature="uu")
    return {"Sim": dbus.ObjectPath(SIM_PATH), "SimSlots": no_paths(), "PrimarySimSlot": u32(0), "Bearers": no_paths(),
            "SupportedCapabilities": dbus.Array([u32(12)], signature="u"), "CurrentCapabilities": u32(12),
            "MaxBearers": u32(1), "MaxActiveBearers": u32(1), "MaxActiveMultiplexedBearers": u32(0),
            "Manufacturer": "Test", "Model": "LTE dongle", "Revision": "1", "CarrierConfiguration": "",
            "CarrierConfigurationRevision": "", "HardwareRevision": "", "DeviceIdentifier": "test0",
            "Device": "/sys/devices/test", "Drivers": dbus.Array(["test"], signature="s"), "Plugin": "generic",
            "PrimaryPort": "cdc-wdm0", "Ports": dbus.Array(ports, signature="(su)"),
            "EquipmentIdentifier": "001010000000001", "UnlockRequired": u32(1),
            "UnlockRetries": dbus.Dictionary({}, signature="uu"), "State": dbus.Int32(STATE_REGISTERED),
            "StateFailedReason": u32(0), "AccessTechnologies": u32(1 << 14),
            "SignalQuality": dbus.Struct((u32(70), True), signature="ub"),
            "OwnNumbers": dbus.Array([], signature="s"), "PowerState": u32(3),
            "SupportedModes": dbus.Array([modes], signature="(uu)"), "CurrentModes": modes,
            "SupportedBands": dbus.Array([], signature="u"), "CurrentBands": dbus.Array([], signature="u"),
            "SupportedIpFamilies": u32(1)}


def network_properties():
    return {"Imei": "001010000000001", "RegistrationState": u32(1), "OperatorCode": "00101",
            "OperatorName": "Test Net", "EnabledFacilityLocks": u32(0), "SubscriptionState": u32(0),
            "EpsUeModeOperation": u32(0), "Pco": dbus.Array([], signature="(ubay)"),
            "InitialEpsBearer": dbus.ObjectPath("/"), "InitialEpsBearerSettings": dictionary({}),
            "PacketServiceState": u32(2)}


@dbus.service.method(MOCK_IFACE, in_signature="", out_signature="")
def Plug(self):
    """The dongle is put in."""
    self.AddObject(SIM_PATH, SIM, sim_properties(), [])
    self.AddObject(BEARER_PATH, BEARER, bearer_properties(), [("Connect", "", "", ""), ("Disconnect", "", "", "")])
    self.AddObject(MODEM_PATH, MODEM, modem_properties(self.interface),
                   [("Enable", "b", "", ""), ("ListBearers", "", "ao", f'ret = self.props["{MODEM}"]["Bearers"]'),
                    ("DeleteBearer", "o", "", ""), ("SetPowerState", "u", "", "")])
    modem = get_object(MODEM_PATH)
    modem.connect, modem.disconnect = connect, disconnect
    modem.AddMethods(SIMPLE, [("Connect", "a{sv}", "o", "ret = self.connect(self, args[0])"),
                              ("Disconnect", "o", "", "self.disconnect(self)"),
                              ("GetStatus", "", "a{sv}",
                               'ret = dbus.Dictionary({"state": dbus.UInt32(8)}, signature="sv")')])
    modem.props.setdefault(SIMPLE, {})  # an interface without properties would not be announced
    modem.AddProperties(MODEM_3GPP, network_properties())
    self.object_manager_emit_added(MODEM_PATH)


@dbus.service.method(MOCK_IFACE, in_signature="", out_signature="")
def Unplug(self):
    """The dongle is pulled."""
    self.object_manager_emit_removed(MODEM_PATH)
    for path in (MODEM_PATH, BEARER_PATH, SIM_PATH):
        self.RemoveObject(path)


@dbus.service.method(MOCK_IFACE, in_signature="", out_signature="")
def NetworkDrop(self):
    """The network ends the data session."""
    disconnect(get_object(MODEM_PATH))


@dbus.service.method(MOCK_IFACE, in_signature="s", out_signature="")
def OnConnect(self, command):
    """A shell command to be run when the modem is told to connect, such as one that makes its data interface."""
    self.on_connect = str(command)
