// The one table of texts that users read. Each section holds the texts of one unit;
// within it they stand in the order in which they are met.
#pragma once

// Logon dialog
inline constexpr char SLogonCaption[] = "Login";
inline constexpr char SLogonServer[] = "&Server:";
inline constexpr char SLogonUser[] = "&User:";
inline constexpr char SLogonPassword[] = "&Password:";
inline constexpr char SLogonOk[] = "Logon";
inline constexpr char SLogonCancel[] = "Cancel";
inline constexpr char SProductName[] = "Quorane Requirements";

// Session
inline constexpr char SSDKVersion[] = "Quorane SDK Version: ";
inline constexpr char SJavaVersion[] = "Java Version: ";
inline constexpr char SUserMustChangePassword[] =
    "User must change password, please use the normal Quorane client to do it";
inline constexpr char SHostNotFound[] = "Could not connect to the Quorane Server: host not found.";
inline constexpr char SInvalidLogin[] = "Invalid Login";
inline constexpr char SAccountDisabled[] = "Account disabled";
inline constexpr char SNotLoggedOn[] = "Not logged on to a Quorane server";

// Containers
inline constexpr char SNotARequirementNode[] = "Not a requirement node!";
