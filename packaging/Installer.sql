-- What the installer needs and wixl does not do, a statement a line.

-- It does not look into the programs for their versions, by which the installer decides what replaces what.
UPDATE `File` SET `Version` = '@VERSION@.0', `Language` = '1033' WHERE `File` = 'V5StringsDll'
UPDATE `File` SET `Version` = '@VERSION@.0', `Language` = '1033' WHERE `File` = 'V5siteExe'
DELETE FROM `MsiFileHash` WHERE `File_` = 'V5StringsDll'
DELETE FROM `MsiFileHash` WHERE `File_` = 'V5siteExe'

-- The older version goes inside the transaction (after InstallInitialize): when the upgrade fails, it is put back.
UPDATE `InstallExecuteSequence` SET `Sequence` = 1501 WHERE `Action` = 'RemoveExistingProducts'
-- The folder is chosen before costs are told, and known after.
UPDATE `InstallExecuteSequence` SET `Sequence` = 60 WHERE `Action` = 'KeepFolder'
UPDATE `InstallExecuteSequence` SET `Sequence` = 1010 WHERE `Action` = 'TellFolder'

-- It gives components no conditions.
UPDATE `Component` SET `Condition` = '@BITS@ = 64 AND ENTRIESOFEACHWIDTH' WHERE `Component` = 'EntriesOfThisWidth'
UPDATE `Component` SET `Condition` = 'VANTOR5_SYSTEM_FOLDER' WHERE `Component` = 'SystemFolder'

-- It knows no environment variables: "*" is the machine's, "=" sets it, "-" removes it with the component, "[~]" is what
-- stands there. VANTOR5_SYSTEM_FOLDER is set when the command line names it, and stays: it is the site's.
CREATE TABLE `Environment` (`Environment` CHAR(72) NOT NULL, `Name` CHAR(255) NOT NULL LOCALIZABLE, `Value` CHAR(255) LOCALIZABLE, `Component_` CHAR(72) NOT NULL PRIMARY KEY `Environment`)
INSERT INTO `Environment` (`Environment`, `Name`, `Value`, `Component_`) VALUES ('ToolOnPath', '=-*PATH', '[~];[INSTALLDIR]', 'ToolOnPath')
INSERT INTO `Environment` (`Environment`, `Name`, `Value`, `Component_`) VALUES ('SystemFolder', '=*VANTOR5_SYSTEM_FOLDER', '[VANTOR5_SYSTEM_FOLDER]', 'SystemFolder')
INSERT INTO `InstallExecuteSequence` (`Action`, `Sequence`) VALUES ('RemoveEnvironmentStrings', 3300)
INSERT INTO `InstallExecuteSequence` (`Action`, `Sequence`) VALUES ('WriteEnvironmentStrings', 5200)
