' Asks the registered component who it is and tries every kind of member that works without a host.
'   cscript //nologo try_component.vbs
Option Explicit
Dim addOn, width, height

Set addOn = CreateObject("OrvOutFormat.AddOnControl")
WScript.Echo addOn.ProgID & " " & addOn.Version

' A property that is stored and given back; a number that does not fit is refused.
addOn.CurrentClusterIndex = 1
addOn.CurrentDeviceIndex = 0
WScript.Echo "cluster " & addOn.CurrentClusterIndex & ", device " & addOn.CurrentDeviceIndex
On Error Resume Next
addOn.CurrentDeviceIndex = 70000
WScript.Echo "too large: error " & Err.Number
Err.Clear
On Error GoTo 0

' -1: no values were read. Enable only sets a flag; showing needs a container.
addOn.Enable
WScript.Echo "result " & addOn.GetResult

' Arguments that are filled take variants.
addOn.GetMinSize width, height
WScript.Echo "least size " & width & " by " & height
WScript.Echo "several at once: " & addOn.MultipleInstances
WScript.Echo "may be unloaded: " & addOn.RequestUnload
WScript.Echo "picture: " & TypeName(addOn.Picture)

' Let go of before the script ends, so that the component's file is free again.
Set addOn = Nothing
